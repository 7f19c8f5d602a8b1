#include "SystemInformationManagerRegistryDefinitions.h"

const QString& SystemInformationManagerRegistryDefinitions::getKeyLabelTextId()
{
    static const QString key = QStringLiteral("labelTextId");
    return key;
}

const QString& SystemInformationManagerRegistryDefinitions::getKeyLabel()
{
    static const QString key = QStringLiteral("label");
    return key;
}

const QString& SystemInformationManagerRegistryDefinitions::getKeyLabelShort()
{
    static const QString key = QStringLiteral("labelShort");
    return key;
}
