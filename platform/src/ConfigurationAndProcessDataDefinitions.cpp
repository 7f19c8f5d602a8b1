#include "ConfigurationAndProcessDataDefinitions.h"

const QString& ConfigurationAndProcessDataDefinitions::getKeyDataPropertyLabelTextId()
{
    static const QString key = QStringLiteral("labelTextId");
    return key;
}

const QString& ConfigurationAndProcessDataDefinitions::getKeyDataPropertyLabelText()
{
    static const QString key = QStringLiteral("labelText");
    return key;
}

const QString& ConfigurationAndProcessDataDefinitions::getKeyDataPropertyLabelTextUrl()
{
    static const QString key = QStringLiteral("labelTextUrl");
    return key;
}
