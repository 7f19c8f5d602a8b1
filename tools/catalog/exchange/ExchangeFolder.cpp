#include "ExchangeFolder.h"

#include "BaseTextRecordFile.h"
#include "FileCheck.h"
#include "LanguageTags.h"
#include "NearestNames.h"
#include "PseudoLanguage.h"
#include "RegularFile.h"

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

QStringList listLanguages(const QString& folderPath)
{
    QStringList languages;
    const QFileInfoList entries = listLanguageFiles(folderPath);
    for (const QFileInfo& entry : entries) {
        if (entry.isFile())
            languages.append(entry.baseName());
    }
    languages.removeDuplicates();
    return languages;
}

ExchangeFolder::ExchangeFolder(const QString& folderPath, const QString& shortFolder,
                               const QString& baseLanguage)
    : m_StrFolderPath(folderPath)
    , m_StrShortFolder(shortFolder)
    , m_StrBaseLanguage(baseLanguage)
{
    m_Base.baseLanguage = baseLanguage;
    m_Base.full = readBase(folderPath);
    if (m_StrFault.isEmpty() && pathOf(folderPath, baseLanguage).isEmpty())
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
    ExchangeTexts texts = m_Base;
    texts.language = language;
    if (pathOf(m_StrFolderPath, language).isEmpty())
        fault = QStringLiteral("there is no language '%1' in %2; 'textmanager new' starts it.")
                    .arg(language, m_StrFolderPath) +
                suggestNames(language, listLanguages(m_StrFolderPath));
    texts.full.language = LanguageTexts(readDocument(m_StrFolderPath, language, fault));
    if (!m_StrShortFolder.isEmpty())
        texts.shortTexts.language = LanguageTexts(readDocument(shortFolderPath(), language, fault));
    return fault.isEmpty() ? std::optional<ExchangeTexts>(texts) : std::nullopt;
}

QString ExchangeFolder::shortFolderPath() const
{
    return QDir(m_StrFolderPath).filePath(m_StrShortFolder);
}

QString ExchangeFolder::pathOf(const QString& folderPath, const QString& language) const
{
    QString path;
    const QFileInfoList entries = listLanguageFiles(folderPath);
    for (const QFileInfo& entry : entries) {
        if (entry.isFile() && entry.baseName() == language)
            path = entry.filePath(); // of several, a text manager keeps the last one
    }
    return path;
}

LanguageDocument ExchangeFolder::readDocument(const QString& folderPath, const QString& language,
                                              QString& fault) const
{
    const QString path = pathOf(folderPath, language);
    if (path.isEmpty() || !fault.isEmpty())
        return LanguageDocument();
    const FileContent content = readRegularFile(path);
    if (!content.bytes) {
        fault = QStringLiteral("%1: cannot be read: %2.").arg(path, content.error);
        return LanguageDocument();
    }
    LanguageDocument document(*content.bytes);
    const QVector<Finding> faults = document.findFaults();
    if (!document.tree().isSound() || !document.isLoaded())
        fault = QStringLiteral("%1:%2:%3: %4")
                    .arg(path, QString::number(faults.first().place.line),
                         QString::number(faults.first().place.column), faults.first().reason);
    return document;
}

ExchangeSide ExchangeFolder::readBase(const QString& folderPath)
{
    ExchangeSide side;
    side.base = LanguageTexts(readDocument(folderPath, m_StrBaseLanguage, m_StrFault));
    side.lastFallback = LanguageTexts(readDocument(folderPath, lastFallback(), m_StrFault));
    const BaseTextRecord record = readRecord(folderPath, m_StrFault);
    if (record.baseLanguage() == m_StrBaseLanguage)
        side.record = record;
    return side;
}

bool ExchangeFolder::isPseudo(const QString& language) const
{
    QString fault;
    const LanguageDocument document = readDocument(m_StrFolderPath, language, fault);
    return document.headerField(PseudoLanguage::headerField()) != JsonTree::none;
}
