#pragma once

#include "ReferencePlatformExport.h"

#include <QString>

/** Names that the system information manager fixes for the services of all modules. */
class REFERENCEPLATFORM_EXPORT SystemInformationManagerDefinitions
{
public:
    SystemInformationManagerDefinitions() = delete;

    /** The object at which a module answers for its configuration: "Configuration". */
    static const QString& getObjectNameConfiguration();
};
