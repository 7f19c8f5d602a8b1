#include "ExchangeFolder.h"

#include "LanguageReading.h"
#include "LanguageTags.h"
#include "NearestNames.h"
#include "PseudoLanguage.h"

#include "LanguageDefinitions.h"

#include <QDir>

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
    m_Base.baseLanguage = baseLanguage;
    m_Base.full = readBase(folderPath);
    if (m_StrFault.isEmpty() && findLanguageFile(folderPath, baseLanguage).isEmpty())
        m_StrFault = QStringLiteral("there is no base language '%1' in %2. Name it with --base.")
                         .arg(baseLanguage, folderPath) +
                     suggestNames(baseLanguage, listLanguages(folderPath));
    if (!shortFolder.isEmpty())
        m_Base.shortTexts = readBase(shortFolderPath());
}

QStringList ExchangeFolder::translatedLanguages() const
{
    QStringList languages = listLanguages(m_StrFolderPath);
    const auto isNone = [this](const QString& language) {
        return language == m_StrBaseLanguage || language == lastFallback() || isPseudo(language);
    };
    languages.erase(std::remove_if(languages.begin(), languages.end(), isNone), languages.end());
    return languages;
}

QString ExchangeFolder::findLanguage(const QString& name) const
{
    const QStringList languages = listLanguages(m_StrFolderPath);
    if (languages.contains(name))
        return name;
    const auto language = std::find_if(languages.begin(), languages.end(), [&](const QString& key) {
        return isSameLanguage(name, key);
    });
    return language == languages.end() ? QString() : *language;
}

std::optional<ExchangeTexts> ExchangeFolder::read(const QString& language, QString& fault) const
{
    if (findLanguageFile(m_StrFolderPath, language).isEmpty())
        fault = QStringLiteral("there is no language '%1' in %2; 'textmanager new' starts it.")
                    .arg(language, m_StrFolderPath) +
                suggestNames(language, listLanguages(m_StrFolderPath));
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
