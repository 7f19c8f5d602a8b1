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
        printMessage(QStringLiteral("the device's bus is not there. Start it (on a desktop: "
                                    "dbus-run-session), and then this again."));
    isExplained = true;
}
