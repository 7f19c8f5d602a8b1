#pragma once

#include "ReferencePlatformExport.h"

#include <QString>

/** Keys of the data properties that the configuration and process data services describe. */
class REFERENCEPLATFORM_EXPORT ConfigurationAndProcessDataDefinitions
{
public:
    ConfigurationAndProcessDataDefinitions() = delete;

    /** Text URL of the label: "labelTextId". */
    static const QString& getKeyDataPropertyLabelTextId();
    /** The text of the label: "labelText". */
    static const QString& getKeyDataPropertyLabelText();
    /** Where the text of a dynamic label is read: "labelTextUrl". */
    static const QString& getKeyDataPropertyLabelTextUrl();
};
