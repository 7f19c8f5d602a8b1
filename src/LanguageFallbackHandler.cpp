#include "LanguageFallbackHandler.h"

#include <QDebug>

namespace
{

// The handler's own order, deliberately apart from the fallback languages of the text managers.
const QString firstFallbackLanguageKey = QStringLiteral("en_US");
const QString secondFallbackLanguageKey = QStringLiteral("POSIX");

} // namespace

LanguageFallbackHandler::LanguageFallbackHandler(const QStringList& languageKeyList)
    : m_LanguageKeyList(languageKeyList)
{
}

LanguageFallbackHandler::~LanguageFallbackHandler() = default;

void LanguageFallbackHandler::setLanguageKeyList(const QStringList& languageKeyList)
{
    m_LanguageKeyList = languageKeyList;
}

QString LanguageFallbackHandler::getResultingLanguageKey(const QString& languageKey) const
{
    for (const QString& key : {languageKey, firstFallbackLanguageKey, secondFallbackLanguageKey}) {
        if (m_LanguageKeyList.contains(key))
            return key;
    }
    qWarning() << "Cannot find any fallback language in language key list:" << m_LanguageKeyList
               << "!";
    return QString();
}
