#pragma once

#include "ReferencePlatformExport.h"

#include <QString>

/** Names that the device manager fixes for its services. */
class REFERENCEPLATFORM_EXPORT DeviceManagerDefinitions
{
public:
    DeviceManagerDefinitions() = delete;

    /** The module that owns the device's configuration and its manifest: "DeviceManager". */
    static const QString& getModuleName();
    /** The instance of the device settings: "DeviceSettings/DeviceSettings". */
    static const QString& getInstanceNameDeviceSettings();
};
