#include "LanguageDefinitions.h"

const QString& LanguageDefinitions::getFirstFallbackLanguageFilename()
{
    static const QString name = QStringLiteral("en_US");
    return name;
}

const QString& LanguageDefinitions::getSecondFallbackLanguageFilename()
{
    static const QString name = QStringLiteral("POSIX");
    return name;
}

const QString& LanguageDefinitions::getJsonHeaderName()
{
    static const QString key = QStringLiteral("Header");
    return key;
}

const QString& LanguageDefinitions::getJsonHeaderLanguageKey()
{
    static const QString key = QStringLiteral("language");
    return key;
}

const QString& LanguageDefinitions::getJsonHeaderSubLanguageKey()
{
    static const QString key = QStringLiteral("subLanguage");
    return key;
}

const QString& LanguageDefinitions::getJsonLanguageKey()
{
    static const QString key = QStringLiteral("Language");
    return key;
}

const QString& LanguageDefinitions::getJsonContentName()
{
    static const QString key = QStringLiteral("Content");
    return key;
}

const QString& LanguageDefinitions::getJsonChildsKey()
{
    static const QString key = QStringLiteral("childs");
    return key;
}

const QString& LanguageDefinitions::getJsonTextName()
{
    static const QString key = QStringLiteral("text");
    return key;
}

const QString& LanguageDefinitions::getJsonCommentName()
{
    static const QString key = QStringLiteral("comment");
    return key;
}

const QString& LanguageDefinitions::getUrlSeparator()
{
    static const QString separator = QStringLiteral("/");
    return separator;
}
