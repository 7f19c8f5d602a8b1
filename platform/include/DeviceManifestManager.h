#pragma once

#include "ReferencePlatformExport.h"

#include <QString>

/**
 * What the device is made of, as its device manager tells it on the bus: see
 * ConfigurationFileHandlerDBusConnector for the bus, and for how long an answer is waited for.
 */
class REFERENCEPLATFORM_EXPORT DeviceManifestManager
{
public:
    /** Asks once; what it was told holds for as long as it lives. A device manager that is not
     * there, or does not answer, has no status display: nothing is logged. */
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
