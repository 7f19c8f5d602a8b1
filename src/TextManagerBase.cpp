#include "TextManagerBase.h"

#include "HeaderKey_p.h"
#include "LanguageDefinitions.h"
#include "LanguageInformation.h"
#include "LanguageInformation_p.h"
#include "RegularFile_p.h"
#include "TextManagerMemory_p.h"

#include "PropertyManagerConst.h"

#include <QDebug>
#include <QMutexLocker>

namespace
{

QString languageFileName(const QString& languageName)
{
    return languageName + QLatin1Char('.') + PropertyManagerConst::getLanguageFileExtension();
}

/** Whether a file could be read and is a language file. */
bool isLanguageFile(const std::optional<QJsonObject>& document, const QString& filePath)
{
    if (!document)
        return false;
    const bool hasContent = document->contains(LanguageDefinitions::getJsonContentName());
    if (!hasContent)
        qWarning() << "No 'Content'-key found in language file:" << filePath;
    return hasContent;
}

TextManagerMutex recursiveMutex()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return TextManagerMutex(QMutex::Recursive);
#else
    return TextManagerMutex();
#endif
}

} // namespace

TextManagerBase::TextManagerBase(const QString& languagePath, const QString& languageName,
                                 const QString& shortLanguageFolder)
    : m_Memory(std::make_unique<TextManagerMemory>())
    , m_StrLanguagePath(languagePath)
    , m_StrLanguageName(languageName)
    , m_Mutex(recursiveMutex())
    , m_StrShortLanguageFolder(shortLanguageFolder)
    , m_DynamicTextHandler(nullptr)
{
    if (!languagePath.isEmpty())
        loadLanguages();
}

TextManagerBase::TextManagerBase(const QString& languageName, QJsonObject& languageObject)
    : m_Memory(std::make_unique<TextManagerMemory>())
    , m_DynamicTextHandler(nullptr)
{
    m_LanguageMap.insert(languageName, languageObject);
}

TextManagerBase::~TextManagerBase() = default;

void TextManagerBase::loadLanguages()
{
    const QMutexLocker locker(&m_Mutex);
    addLanguage(m_StrLanguagePath, m_LanguageMap);
    addLanguage(getShortLanguageFilepath(), m_ShortLanguageMap);
}

void TextManagerBase::addLanguage(const QString& folderPath,
                                  QMap<QString, QJsonObject>& languageMap)
{
    // What goes into a caller's own map is not remembered: its documents are the caller's to free.
    const bool isOwnMap = &languageMap == &m_LanguageMap || &languageMap == &m_ShortLanguageMap;
    const auto fileNames = m_Memory->listFiles(folderPath, isOwnMap);
    for (const auto& [filePath, languageKey] : fileNames) {
        const std::optional<QJsonObject> document = readFile(folderPath, filePath, isOwnMap);
        if (isLanguageFile(document, filePath))
            languageMap.insert(languageKey, *document);
    }
}

bool TextManagerBase::loadAndParseFromJson(const QString& filePath, QJsonObject& languageObject)
{
    const QMutexLocker locker(&m_Mutex);
    RegularFile file;
    if (!file.open(filePath))
        return false;
    const std::optional<QJsonObject> document = LanguageFile::parse(file.readAll());
    if (document)
        languageObject = *document;
    return isLanguageFile(document, filePath);
}

QString TextManagerBase::getLanguageFileNameFromLanguageName(const QString& languageName) const
{
    return m_StrLanguagePath + languageFileName(languageName);
}

QString TextManagerBase::getShortLanguageFileNameFromLanguageName(const QString& languageName) const
{
    if (m_StrShortLanguageFolder.isEmpty())
        return QString();
    return getShortLanguageFilepath() + QLatin1Char('/') + languageFileName(languageName);
}

QString TextManagerBase::getShortLanguageFilepath() const
{
    if (m_StrShortLanguageFolder.isEmpty())
        return QString();
    return m_StrLanguagePath + m_StrShortLanguageFolder;
}

QString TextManagerBase::getLanguageName() const
{
    return m_StrLanguageName;
}

QString TextManagerBase::extractLanguageFromTextUrl(const QString& textUrl)
{
    return textUrl.split(LanguageDefinitions::getUrlSeparator()).last();
}

QStringList TextManagerBase::getAvailableLanguages() const
{
    const QMutexLocker locker(&m_Mutex);
    return m_LanguageMap.keys();
}

QString TextManagerBase::getHeaderText(TextManagerDefinitions::HeaderInfo headerInfo,
                                       const QString& languageKey, bool) const
{
    const QMutexLocker locker(&m_Mutex);
    const QString fieldKey = headerKey(headerInfo);
    if (fieldKey.isEmpty())
        qWarning() << "unknown headInfo item : :" << static_cast<int>(headerInfo);

    const QJsonObject languageObject = m_LanguageMap.value(languageKey);
    if (fieldKey.isEmpty() || languageObject.isEmpty())
        return QString();
    bool ok = false;
    return LanguageInformation().getObject(fieldKey, ok, languageObject,
                                           LanguageDefinitions::getJsonHeaderName(), QString());
}

QPair<QString, QString> TextManagerBase::getLanguageHeaderInfo(const QString& languageKey) const
{
    const QMutexLocker locker(&m_Mutex);
    return LanguageInformation().getLanguageHeaderInfo(documentOrFirstFallback(languageKey));
}

QStringList TextManagerBase::getAvailableUrls(const QString& languageKey) const
{
    const QMutexLocker locker(&m_Mutex);
    return LanguageInformation().getAvailableUrls(documentOrFirstFallback(languageKey));
}

void TextManagerBase::setDynamicTextReader(DynamicTextReaderInterface& reader)
{
    m_DynamicTextHandler.setInterface(&reader);
}

QString TextManagerBase::getDynamicText(const QString& url, const QString& language) const
{
    return m_DynamicTextHandler.getText(url, language);
}

void TextManagerBase::reloadLanguage()
{
    loadLanguages();
    Q_EMIT languageReloaded();
}

std::optional<QJsonObject> TextManagerBase::readFile(const QString& folderPath,
                                                     const QString& filePath, bool isRemembered)
{
    const QMutexLocker locker(&m_Mutex);
    return m_Memory->readFile(folderPath, filePath, isRemembered);
}

QJsonObject TextManagerBase::documentOrFirstFallback(const QString& languageKey) const
{
    const QJsonObject languageObject = m_LanguageMap.value(languageKey);
    if (!languageObject.isEmpty())
        return languageObject;
    return m_LanguageMap.value(LanguageDefinitions::getFirstFallbackLanguageFilename());
}
