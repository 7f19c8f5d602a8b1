#pragma once

#include <QString>

struct DeviceManagerDefinitions {
    static QString getInstanceNameDeviceSettings() { return QStringLiteral("Settings"); }
};
