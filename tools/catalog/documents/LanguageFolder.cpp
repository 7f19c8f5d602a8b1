#include "LanguageFolder.h"

#include "Console.h"

#include "LanguageDefinitions.h"

#include <QFileInfo>

#include <algorithm>

namespace
{

/** The languages that a look-up tries, in their order. */
QStringList triedLanguages(const QString& languageKey)
{
    QStringList languages = {languageKey, LanguageDefinitions::getFirstFallbackLanguageFilename(),
                             LanguageDefinitions::getSecondFallbackLanguageFilename()};
    languages.removeDuplicates();
    return languages;
}

} // namespace

std::unique_ptr<LanguageFolder> LanguageFolder::open(const QString& folderPath,
                                                     const QString& shortFolder)
{
    // A text manager takes its path as a prefix.
    const QString languagePath =
        folderPath.endsWith(QLatin1Char('/')) ? folderPath : folderPath + QLatin1Char('/');
    if (!checkFolder(folderPath) || !checkFolder(languagePath + shortFolder))
        return nullptr;

    std::unique_ptr<LanguageFolder> folder;
    {
        // The check below names the same files, and more of them, with line and column; and without
        // a short-text folder the library speaks of unrelated files in the current directory.
        const SilencedWarnings silenced;
        folder.reset(new LanguageFolder(languagePath, shortFolder));
    }
    folder->m_LeftOutFiles = findLeftOutFiles(languagePath);
    if (!shortFolder.isEmpty())
        folder->m_LeftOutFiles += findLeftOutFiles(folder->getShortLanguageFilepath());
    for (const FileFinding& finding : qAsConst(folder->m_LeftOutFiles))
        printMessage(finding.toString());
    return folder;
}

bool LanguageFolder::checkFolder(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir() && info.isReadable())
        return true;
    const QString reason = !info.exists()  ? QStringLiteral("there is no such folder.")
                           : !info.isDir() ? QStringLiteral("it is no folder.")
                                           : QStringLiteral("it may not be read.");
    printMessage(QStringLiteral("cannot read language files in '%1': %2").arg(path, reason));
    return false;
}

LanguageFolder::LanguageFolder(const QString& languagePath, const QString& shortFolder)
    : TextManagerBase(languagePath, LanguageDefinitions::getFirstFallbackLanguageFilename(),
                      shortFolder)
{
}

LanguageFolder::Answer LanguageFolder::lookUp(const QString& textUrl, Wanted wanted,
                                              const QString& languageKey) const
{
    Answer answer;
    bool ok = false;
    switch (wanted) {
    case Wanted::Text:
        answer.text = getText(textUrl, ok, languageKey, true);
        break;
    case Wanted::ShortText:
        answer.text = getShortText(textUrl, ok, languageKey);
        break;
    case Wanted::Comment:
        answer.text = getComment(textUrl, languageKey, ok);
        break;
    }
    if (!answer.isFound())
        return answer;

    // Which language it came from is seen by asking each alone; warnings were given above.
    const SilencedWarnings silenced;
    const auto hasOwn = [&](const QMap<QString, QJsonObject>& languageMap, const QString& key) {
        return !readOwn(languageMap, textUrl, wanted, key, ok).isEmpty();
    };
    answer.isShortText = wanted == Wanted::ShortText && hasOwn(m_ShortLanguageMap, languageKey);
    const QStringList tried = triedLanguages(languageKey);
    answer.language = answer.isShortText
                          ? languageKey
                          : *std::find_if(tried.begin(), tried.end(), [&](const QString& key) {
                                return hasOwn(m_LanguageMap, key);
                            });
    return answer;
}

QString LanguageFolder::explainMiss(const QString& textUrl, Wanted wanted,
                                    const QString& languageKey) const
{
    const SilencedWarnings silenced; // given by the look-up that found nothing
    QStringList reasons;
    for (const QString& key : triedLanguages(languageKey)) {
        bool isThere = false;
        readOwn(m_LanguageMap, textUrl, wanted, key, isThere);
        const QString reason = isThere                       ? QStringLiteral("empty or no string")
                               : m_LanguageMap.contains(key) ? QStringLiteral("not in its file")
                                                             : QStringLiteral("not loaded");
        reasons.append(QStringLiteral("%1: %2").arg(key, reason));
    }
    return reasons.join(QStringLiteral(", "));
}

QString LanguageFolder::chooseLoadedLanguage(const QString& languageKey) const
{
    const QString fallbackKey = LanguageDefinitions::getFirstFallbackLanguageFilename();
    if (m_LanguageMap.contains(languageKey))
        return languageKey;
    const QString loaded = m_LanguageMap.isEmpty()
                               ? QStringLiteral("no language is loaded")
                               : QStringLiteral("loaded are: %1")
                                     .arg(getAvailableLanguages().join(QStringLiteral(", ")));
    if (!m_LanguageMap.contains(fallbackKey)) {
        printMessage(QStringLiteral("language '%1' is not loaded; %2.").arg(languageKey, loaded));
        return QString();
    }
    printMessage(QStringLiteral("language '%1' is not loaded, '%2' answers; %3.")
                     .arg(languageKey, fallbackKey, loaded));
    return fallbackKey;
}

QStringList LanguageFolder::collectAllUrls() const
{
    QStringList urls;
    for (const QString& key : getAvailableLanguages())
        urls += getAvailableUrls(key);
    urls.removeDuplicates();
    return urls;
}

QString LanguageFolder::readOwn(const QMap<QString, QJsonObject>& languageMap,
                                const QString& textUrl, Wanted wanted, const QString& languageKey,
                                bool& ok) const
{
    return getObjectFromMap(languageMap, textUrl, ok, languageKey,
                            LanguageDefinitions::getJsonContentName(),
                            wanted == Wanted::Comment ? LanguageDefinitions::getJsonCommentName()
                                                      : LanguageDefinitions::getJsonTextName());
}
