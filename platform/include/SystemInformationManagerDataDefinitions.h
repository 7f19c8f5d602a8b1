#pragma once

#include "ReferencePlatformExport.h"

#include <QString>

/** Keys of the data items that the system information manager shows, each with a label and a value.
 */
class REFERENCEPLATFORM_EXPORT SystemInformationManagerDataDefinitions
{
public:
    SystemInformationManagerDataDefinitions() = delete;

    /** Text URL of the label: "labelTextId". */
    static const QString& getKeyLabelTextId();
    /** The text of the label: "labelText". */
    static const QString& getKeyLabelText();
    /** The short text of the label: "labelTextShort". */
    static const QString& getKeyLabelTextShort();

    /** Text URL of the value: "valueTextId". */
    static const QString& getKeyValueTextId();
    /** The text of the value: "valueText". */
    static const QString& getKeyValueText();
    /** The short text of the value: "valueTextShort". */
    static const QString& getKeyValueTextShort();
};
