#include "DeviceManagerDefinitions.h"

const QString& DeviceManagerDefinitions::getModuleName()
{
    static const QString name = QStringLiteral("DeviceManager");
    return name;
}

const QString& DeviceManagerDefinitions::getInstanceNameDeviceSettings()
{
    static const QString name = QStringLiteral("DeviceSettings/DeviceSettings");
    return name;
}
