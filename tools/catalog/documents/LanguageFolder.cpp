#include "LanguageFolder.h"

#include "LanguageCatalog.h"
#include "TextKey.h"
#include "TextNodes.h"

#include "LanguageDefinitions.h"

#include <QMutexLocker>

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

LanguageFolder::LanguageFolder(const QString& folderPath, const QString& shortFolder)
    : TextManagerBase(QString(), LanguageDefinitions::getFirstFallbackLanguageFilename(),
                      shortFolder)
{
    // A text manager takes its path as a prefix. Loaded here, since without a short-text folder it
    // would look for one in the current directory.
    m_StrLanguagePath =
        folderPath.endsWith(QLatin1Char('/')) ? folderPath : folderPath + QLatin1Char('/');
    const QMutexLocker locker(&m_Mutex);
    addLanguage(m_StrLanguagePath, m_LanguageMap);
    if (!shortFolder.isEmpty())
        addLanguage(getShortLanguageFilepath(), m_ShortLanguageMap);
}

LanguageFolder::Answer LanguageFolder::lookUp(const QString& textUrl, Wanted wanted,
                                              const QString& languageKey) const
{
    if (wanted == Wanted::Comment)
        return lookUpComment(textUrl, languageKey);
    if (wanted == Wanted::ShortText) {
        const QString text = readOwn(m_ShortLanguageMap, textUrl, wanted, languageKey);
        if (!text.isEmpty())
            return {text, languageKey, true};
    }
    return lookUpFullText(textUrl, languageKey);
}

LanguageFolder::Answer LanguageFolder::lookUpFullText(const QString& textUrl,
                                                      const QString& languageKey) const
{
    const QString language = getAnsweringLanguage(textUrl, languageKey);
    if (language.isEmpty())
        return Answer();
    return {readOwn(m_LanguageMap, textUrl, Wanted::Text, language), language, false};
}

LanguageFolder::Answer LanguageFolder::lookUpComment(const QString& textUrl,
                                                     const QString& languageKey) const
{
    for (const QString& key : triedLanguages(languageKey)) {
        const QString comment = readOwn(m_LanguageMap, textUrl, Wanted::Comment, key);
        if (!comment.isEmpty())
            return {comment, key, false};
    }
    return Answer();
}

QString LanguageFolder::explainMiss(const QString& textUrl, Wanted wanted,
                                    const QString& languageKey) const
{
    const QString member = wanted == Wanted::Comment ? LanguageDefinitions::getJsonCommentName()
                                                     : LanguageDefinitions::getJsonTextName();
    QStringList reasons;
    for (const QString& key : triedLanguages(languageKey)) {
        const QJsonObject document = m_LanguageMap.value(key);
        const QJsonValue value =
            valueAt(storagePathOf(textUrl, document) + QStringList(member), document);
        const QString reason = !value.isUndefined()          ? QStringLiteral("empty or no string")
                               : m_LanguageMap.contains(key) ? QStringLiteral("not in its file")
                                                             : QStringLiteral("not loaded");
        reasons.append(QStringLiteral("%1: %2").arg(key, reason));
    }
    return reasons.join(QStringLiteral(", "));
}

QString LanguageFolder::chooseLoadedLanguage(const QString& languageKey) const
{
    const QString& fallbackKey = LanguageDefinitions::getFirstFallbackLanguageFilename();
    return m_LanguageMap.contains(languageKey)   ? languageKey
           : m_LanguageMap.contains(fallbackKey) ? fallbackKey
                                                 : QString();
}

QVector<Finding> LanguageFolder::findLeftOutFiles() const
{
    const auto isLoaded = [this](const QString& language, bool isShort) {
        return (isShort ? m_ShortLanguageMap : m_LanguageMap).contains(language);
    };
    return LanguageCatalog(m_StrLanguagePath, m_StrShortLanguageFolder, isLoaded).findLeftOut();
}

QStringList LanguageFolder::collectAllUrls() const
{
    QStringList urls;
    for (const QString& key : getAvailableLanguages())
        urls += getAvailableUrls(key);
    removeRepeated(urls);
    return urls;
}

QString LanguageFolder::readOwn(const QMap<QString, QJsonObject>& languageMap,
                                const QString& textUrl, Wanted wanted,
                                const QString& languageKey) const
{
    bool ok = false;
    return getObjectFromMap(languageMap, textUrl, ok, languageKey,
                            LanguageDefinitions::getJsonContentName(),
                            wanted == Wanted::Comment ? LanguageDefinitions::getJsonCommentName()
                                                      : LanguageDefinitions::getJsonTextName());
}
