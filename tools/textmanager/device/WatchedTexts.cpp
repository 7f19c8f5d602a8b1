#include "WatchedTexts.h"

#include "Console.h"
#include "NearestNames.h"

#include "TextManager.h"

WatchedTexts::WatchedTexts(const TextManager& manager, const QStringList& urls, bool isJsonWanted)
    : m_Manager(manager)
    , m_Urls(urls)
    , m_IsJsonWanted(isJsonWanted)
{
}

bool WatchedTexts::print()
{
    m_Printed = current();
    reportLanguage();
    for (int index = 0; index < m_Urls.size(); ++index) {
        printText(m_Urls.at(index), m_Printed.at(index + 1));
        if (!flushResult())
            return false;
    }
    return true;
}

bool WatchedTexts::printIfChanged()
{
    return m_Printed == current() || print();
}

QStringList WatchedTexts::current() const
{
    QStringList current = {m_Manager.getLanguageName()};
    for (const QString& url : m_Urls)
        current.append(m_Manager.getText(url, QString()));
    return current;
}

void WatchedTexts::reportLanguage() const
{
    const QString language = m_Manager.getLanguageName();
    const QStringList loaded = m_Manager.getAvailableLanguages();
    if (language.isEmpty())
        printMessage(QStringLiteral("no language is known; en_US answers, then POSIX."));
    else if (loaded.contains(language))
        printMessage(QStringLiteral("the language is %1.").arg(language));
    else
        printMessage(QStringLiteral("the language is %1, which is not loaded; en_US answers, then "
                                    "POSIX.")
                         .arg(language) +
                     suggestNames(language, loaded));
}

void WatchedTexts::printText(const QString& url, const QString& text) const
{
    if (text.isEmpty())
        printMessage(QStringLiteral("%1: no text.").arg(url));
    if (m_IsJsonWanted)
        printResult(QJsonObject{{QStringLiteral("url"), url},
                                {QStringLiteral("found"), !text.isEmpty()},
                                {QStringLiteral("text"), text},
                                {QStringLiteral("currentLanguage"), m_Manager.getLanguageName()}});
    else if (m_Urls.size() > 1)
        printResult(url + QLatin1Char('\t') + text);
    else if (!text.isEmpty())
        printResult(text);
}
