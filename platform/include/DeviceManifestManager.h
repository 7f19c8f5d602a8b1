#pragma once

#include "ReferencePlatformExport.h"

#include <QString>

/**
 * What the device is made of. That is a fact of the device, not of a service that may be late: so
 * it stands in a manifest file, /etc/textmanager/manifest.json, or where the environment variable
 * TEXTMANAGER_MANIFEST points:
 *
 *     { "statusDisplay": { "available": true, "folder": "short" } }
 *
 * Where there is no such file, or it has no "statusDisplay", the device manager is asked on the
 * bus: see ConfigurationFileHandlerDBusConnector for the bus, and for how long an answer is waited
 * for. A file that cannot be used is a warning that says where and why, and then counts as none.
 */
class REFERENCEPLATFORM_EXPORT DeviceManifestManager
{
public:
    /** Reads the file, or asks, once; what it was told holds for as long as it lives. A device
     * manager that is not there, or does not answer, has no status display: nothing is logged. */
    DeviceManifestManager();

    /** Whether the device has a status display. */
    bool isStatusDisplayAvailable() const;
    /** The status display's folder of texts, relative to a folder of language files; empty without
     * a status display. */
    QString getStatusDisplayFolder() const;

private:
    bool m_IsStatusDisplayAvailable = false;
    QString m_StrStatusDisplayFolder;
};
