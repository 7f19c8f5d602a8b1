#include "DeviceMessages.h"

#include "Console.h"

void printDeviceMessage(const QString& message)
{
    static bool isExplained = false;
    if (message != QLatin1String("Invalid pointer to connector!")) {
        printMessage(message);
        return;
    }
    if (!isExplained)
        printMessage(QStringLiteral("the configuration service of the device is not on the bus. "
                                    "Start it (on a desktop: device-simulator), and then this "
                                    "again."));
    isExplained = true;
}
