#pragma once

#include "ReferencePlatformExport.h"

#include <QString>

/** Keys of the entries in the registry of the system information manager. */
class REFERENCEPLATFORM_EXPORT SystemInformationManagerRegistryDefinitions
{
public:
    SystemInformationManagerRegistryDefinitions() = delete;

    /** Text URL of the label: "labelTextId". */
    static const QString& getKeyLabelTextId();
    /** The label: "label". */
    static const QString& getKeyLabel();
    /** The short text of the label: "labelShort". */
    static const QString& getKeyLabelShort();
};
