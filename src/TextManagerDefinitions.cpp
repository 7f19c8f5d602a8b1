#include "TextManagerDefinitions.h"

namespace TextManagerDefinitions
{

const QString& getModuleName()
{
    static const QString name = QStringLiteral("TextManager");
    return name;
}

const QString& getObjectName()
{
    static const QString name = QStringLiteral("TextHandling");
    return name;
}

const QString& getInterfaceName()
{
    static const QString name = QStringLiteral("Interface.TextManager");
    return name;
}

const QString& getDBusMethodGetTranslatedTextFromUrlList()
{
    static const QString name = QStringLiteral("getTranslatedTextFromUrlList");
    return name;
}

} // namespace TextManagerDefinitions
