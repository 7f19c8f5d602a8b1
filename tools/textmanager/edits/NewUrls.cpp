#include "NewUrls.h"

#include "Console.h"
#include "FolderWords.h"
#include "NearestNames.h"
#include "TextKey.h"
#include "TextNodes.h"

#include "LanguageInformation.h"

NewUrls::NewUrls(const QVector<TextEdit>& edits, const QJsonObject& document)
    : m_KnownUrls(LanguageInformation().getAvailableUrls(document))
{
    for (const TextEdit& edit : edits) {
        if (valueAt(storagePathOf(edit.url, document), document).isUndefined())
            m_NewUrls.append(edit.url);
    }
    removeRepeated(m_NewUrls);
}

bool NewUrls::areRefused() const
{
    NameSuggestions suggestions([this] { return m_KnownUrls; });
    for (const QString& url : m_NewUrls)
        printMessage(QStringLiteral("%1: is not there, and --must-exist adds no URL.").arg(url) +
                     suggestions.suggest(url));
    return !m_NewUrls.isEmpty();
}

void NewUrls::askForSlips(const QString& folderPath) const
{
    constexpr int mostQuestions = 20;
    QStringList urlsOfAllLanguages; // loaded when there is something to ask
    for (const QString& url : m_NewUrls.mid(0, mostQuestions)) {
        const QString question = suggestNames(url, m_KnownUrls);
        if (!question.isEmpty() && urlsOfAllLanguages.isEmpty())
            urlsOfAllLanguages = urlsOf(folderPath);
        if (!question.isEmpty() && !urlsOfAllLanguages.contains(url))
            printMessage(QStringLiteral("%1: is new.").arg(url) + question);
    }
}
