#include "ExchangeFolder.h"
#include "LanguageReading.h"
#include "LanguageTags.h"
#include "NearestNames.h"
#include "PseudoLanguage.h"

#include "LanguageDefinitions.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace
{

QString lastFallback()
{
    return LanguageDefinitions::getSecondFallbackLanguageFilename();
}

} // namespace

ExchangeFolder::ExchangeFolder(const QString& folderPath, const QString& shortFolder,
                               const QString& baseLanguage)
    : m_StrFolderPath(folderPath)
    , m_StrShortFolder(shortFolder)
    , m_StrBaseLanguage(baseLanguage)
{
    m_Languages = listLanguages(folderPath, m_StrFault);
    m_Base.baseLanguage = baseLanguage;
    m_Base.full = readBase(folderPath);
    if (m_StrFault.isEmpty() && !m_Languages.contains(baseLanguage))
        m_StrFault = QStringLiteral("there is no base language '%1' in %2. Name it with --base.")
                         .arg(baseLanguage, folderPath) +
                     suggestNames(baseLanguage, m_Languages);
    if (!shortFolder.isEmpty())
        m_Base.shortTexts = readBase(shortFolderPath());
}

QStringList ExchangeFolder::translatedLanguages() const
{
    QStringList languages = m_Languages;
    const auto isNone = [this](const QString& language) {
        return language == m_StrBaseLanguage || language == lastFallback() || isPseudo(language);
    };
    languages.erase(std::remove_if(languages.begin(), languages.end(), isNone), languages.end());
    return languages;
}

QString ExchangeFolder::explainUntranslated(const QString& language) const
{
    if (language == m_StrBaseLanguage)
        return QStringLiteral("'%1' is the base, which is not translated.").arg(language);
    return language == lastFallback()
               ? QStringLiteral("'%1' holds texts of no language, which are not translated.")
                     .arg(language)
               : QString();
}

bool ExchangeFolder::hasFile(const QString& path) const
{
    const QString place = QFileInfo(path).canonicalFilePath();
    QStringList folders = {m_StrFolderPath};
    if (hasShortFolder())
        folders.append(shortFolderPath());
    for (const QString& folder : qAsConst(folders)) {
        const QFileInfoList files =
            QDir(folder).entryInfoList({QStringLiteral("*.json"), QStringLiteral(".textmanager-*")},
                                       QDir::Files | QDir::Hidden);
        if (std::any_of(files.begin(), files.end(), [&](const QFileInfo& file) {
                return !place.isEmpty() && file.canonicalFilePath() == place;
            }))
            return true;
    }
    return false;
}

QString ExchangeFolder::findLanguage(const QString& name) const
{
    if (m_Languages.contains(name))
        return name;
    const auto language =
        std::find_if(m_Languages.begin(), m_Languages.end(),
                     [&](const QString& key) { return isSameLanguage(name, key); });
    return language == m_Languages.end() ? QString() : *language;
}

std::optional<ExchangeTexts> ExchangeFolder::read(const QString& language, QString& fault) const
{
    if (!m_Languages.contains(language))
        fault = QStringLiteral("there is no language '%1' in %2; 'textmanager new' starts it.")
                    .arg(language, m_StrFolderPath) +
                suggestNames(language, m_Languages);
    const LanguageTexts texts = readTexts(m_StrFolderPath, language, fault);
    const LanguageTexts shortTexts =
        hasShortFolder() ? readTexts(shortFolderPath(), language, fault) : LanguageTexts();
    return fault.isEmpty() ? std::make_optional(beside(language, texts, shortTexts)) : std::nullopt;
}

ExchangeTexts ExchangeFolder::beside(const QString& language, const LanguageTexts& texts,
                                     const LanguageTexts& shortTexts) const
{
    ExchangeTexts all = m_Base;
    all.language = language;
    all.full.language = texts;
    all.shortTexts.language = shortTexts;
    return all;
}

QString ExchangeFolder::shortFolderPath() const
{
    return QDir(m_StrFolderPath).filePath(m_StrShortFolder);
}

ExchangeSide ExchangeFolder::readBase(const QString& folderPath)
{
    ExchangeSide side;
    side.base = readTexts(folderPath, m_StrBaseLanguage, m_StrFault);
    side.lastFallback = readTexts(folderPath, lastFallback(), m_StrFault);
    const BaseTextRecord record = BaseTextRecord::readFrom(folderPath, m_StrFault);
    if (record.baseLanguage() == m_StrBaseLanguage)
        side.record = record;
    return side;
}

bool ExchangeFolder::isPseudo(const QString& language) const
{
    QString fault;
    return PseudoLanguage::isPseudo(readLanguage(m_StrFolderPath, language, fault));
}
