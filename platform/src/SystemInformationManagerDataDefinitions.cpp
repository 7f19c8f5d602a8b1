#include "SystemInformationManagerDataDefinitions.h"

const QString& SystemInformationManagerDataDefinitions::getKeyLabelTextId()
{
    static const QString key = QStringLiteral("labelTextId");
    return key;
}

const QString& SystemInformationManagerDataDefinitions::getKeyLabelText()
{
    static const QString key = QStringLiteral("labelText");
    return key;
}

const QString& SystemInformationManagerDataDefinitions::getKeyLabelTextShort()
{
    static const QString key = QStringLiteral("labelTextShort");
    return key;
}

const QString& SystemInformationManagerDataDefinitions::getKeyValueTextId()
{
    static const QString key = QStringLiteral("valueTextId");
    return key;
}

const QString& SystemInformationManagerDataDefinitions::getKeyValueText()
{
    static const QString key = QStringLiteral("valueText");
    return key;
}

const QString& SystemInformationManagerDataDefinitions::getKeyValueTextShort()
{
    static const QString key = QStringLiteral("valueTextShort");
    return key;
}
