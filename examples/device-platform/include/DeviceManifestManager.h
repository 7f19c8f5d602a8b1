#pragma once

#include <QString>

struct DeviceManifestManager {
    bool isStatusDisplayAvailable() const { return false; }
    QString getStatusDisplayFolder() const { return QString(); }
};
