#include "TextManagerBase.h"

#include "HeaderKey_p.h"
#include "LanguageDefinitions.h"
#include "LanguageInformation.h"
#include "LanguageInformation_p.h"
#include "LookUpLocker_p.h"
#include "TextManagerMemory_p.h"

#include "PropertyManagerConst.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QMutexLocker>

namespace
{

QString languageFileName(const QString& languageName)
{
    return languageName + QLatin1Char('.') + PropertyManagerConst::getLanguageFileExtension();
}

} // namespace

TextManagerBase::TextManagerBase(const QString& languagePath, const QString& languageName,
                                 const QString& shortLanguageFolder)
    : m_Memory(std::make_unique<TextManagerMemory>())
    , m_StrLanguagePath(languagePath)
    , m_StrLanguageName(languageName)
    , m_Mutex(QMutex::Recursive)
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
    m_Memory->forgetAnswers(); // else the old documents would live on beside the new ones
    addLanguage(m_StrLanguagePath, m_LanguageMap);
    addLanguage(getShortLanguageFilepath(), m_ShortLanguageMap);
}

void TextManagerBase::addLanguage(const QString& folderPath,
                                  QMap<QString, QJsonObject>& languageMap)
{
    // No dot between the star and the extension: every name that ends in the extension's text.
    const QStringList nameFilters = {QLatin1Char('*') +
                                     PropertyManagerConst::getLanguageFileExtension()};
    // The path is given to the constructor: QDir::setPath() would make nothing of an empty one,
    // which stands for the current directory here.
    const QDir folder(folderPath);
    const QFileInfoList entries = folder.entryInfoList(nameFilters, QDir::NoFilter, QDir::NoSort);
    for (const QFileInfo& entry : entries) {
        const QString filePath = entry.filePath();
        QJsonObject languageObject;
        if (readLanguageFile(m_Memory->files[filePath], filePath, languageObject))
            languageMap.insert(entry.baseName(), languageObject);
        else
            m_Memory->files.remove(filePath);
    }
}

bool TextManagerBase::loadAndParseFromJson(const QString& filePath, QJsonObject& languageObject)
{
    LanguageFile file;
    return readLanguageFile(file, filePath, languageObject);
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

QString TextManagerBase::getText(const QString& textUrl, bool& ok, const QString& languageKey,
                                 bool skipLanguageSelection) const
{
    const LookUpLocker locker(m_Mutex, m_Memory->patience);
    const QString key =
        skipLanguageSelection ? languageKey : selectSuitableLanguageKey(languageKey);
    return fullText(textUrl, ok, key);
}

QString TextManagerBase::getText(const QString& textUrl, const QString& languageKey) const
{
    // Not through the form with the flag: this is the look-up that screens are made of, and what is
    // remembered is found here without another call, and without a copy of the language's key.
    const LookUpLocker locker(m_Mutex, m_Memory->patience);
    const QString& key = languageKey.isEmpty() ? m_StrLanguageName : languageKey;
    m_Memory->keepAnswersOnlyFor(m_LanguageMap, m_ShortLanguageMap);
    if (const Answer* remembered = m_Memory->texts.find(key, textUrl))
        return remembered->text;
    bool ok = false;
    return fullText(textUrl, ok, selectSuitableLanguageKey(languageKey));
}

QString TextManagerBase::getAnsweringLanguage(const QString& textUrl,
                                              const QString& languageKey) const
{
    const LookUpLocker locker(m_Mutex, m_Memory->patience);
    const QString key = selectSuitableLanguageKey(languageKey);
    bool ok = false;
    return answer(&TextManagerMemory::answeringLanguages, textUrl, ok, key, [&] {
        const auto hasText = [&](const QString& candidate) {
            return !getObjectFromMap(m_LanguageMap, textUrl, ok, candidate,
                                     LanguageDefinitions::getJsonContentName(),
                                     LanguageDefinitions::getJsonTextName())
                        .isEmpty();
        };
        if (hasText(key))
            return key;
        for (const QString& fallbackKey :
             {LanguageDefinitions::getFirstFallbackLanguageFilename(),
              LanguageDefinitions::getSecondFallbackLanguageFilename()}) {
            if (fallbackKey != key && hasText(fallbackKey))
                return fallbackKey;
        }
        return QString();
    });
}

QString TextManagerBase::getShortText(const QString& textUrl, bool& ok,
                                      const QString& languageKey) const
{
    const LookUpLocker locker(m_Mutex, m_Memory->patience);
    const QString key = selectSuitableLanguageKey(languageKey);
    return answer(&TextManagerMemory::shortTexts, textUrl, ok, key, [&] {
        const QString shortText = getObjectFromMap(m_ShortLanguageMap, textUrl, ok, key,
                                                   LanguageDefinitions::getJsonContentName(),
                                                   LanguageDefinitions::getJsonTextName());
        if (!shortText.isEmpty())
            return shortText;
        // Not getText(): it would take the mutex again, which blocks on an object built in memory.
        bool isFullTextFound = false;
        return fullText(textUrl, isFullTextFound, key);
    });
}

QString TextManagerBase::getShortText(const QString& textUrl, const QString& languageKey) const
{
    const LookUpLocker locker(m_Mutex, m_Memory->patience);
    bool ok = false;
    return getShortText(textUrl, ok, languageKey);
}

QString TextManagerBase::getComment(const QString& textUrl, const QString& languageKey,
                                    bool& ok) const
{
    return getTextOrComment(m_LanguageMap, textUrl, ok, languageKey,
                            LanguageDefinitions::getJsonContentName(),
                            LanguageDefinitions::getJsonCommentName());
}

QString TextManagerBase::getComment(const QString& textUrl, const QString& languageKey) const
{
    bool ok = false;
    return getComment(textUrl, languageKey, ok);
}

QString TextManagerBase::selectSuitableLanguageKey(const QString& languageKey) const
{
    return languageKey.isEmpty() ? m_StrLanguageName : languageKey;
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

QString TextManagerBase::getObjectFromMap(const QMap<QString, QJsonObject>& languageMap,
                                          const QString& textUrl, bool& ok,
                                          const QString& languageKey, const QString& contentKey,
                                          const QString& valueKey) const
{
    ok = false;
    const QJsonObject languageObject = languageMap.value(languageKey);
    if (languageObject.isEmpty())
        return QString();
    return LanguageInformation().getObject(textUrl, ok, languageObject, contentKey, valueKey);
}

QString TextManagerBase::getTextOrComment(const QMap<QString, QJsonObject>& languageMap,
                                          const QString& textUrl, bool& ok,
                                          const QString& languageKey, const QString& contentKey,
                                          const QString& valueKey) const
{
    QString result = getObjectFromMap(languageMap, textUrl, ok, languageKey, contentKey, valueKey);
    // An empty text falls back as a missing one does: the result decides, not the flag.
    for (const QString& fallbackKey : {LanguageDefinitions::getFirstFallbackLanguageFilename(),
                                       LanguageDefinitions::getSecondFallbackLanguageFilename()}) {
        if (result.isEmpty() && fallbackKey != languageKey)
            result = getObjectFromMap(languageMap, textUrl, ok, fallbackKey, contentKey, valueKey);
    }
    return result;
}

bool TextManagerBase::readLanguageFile(LanguageFile& file, const QString& filePath,
                                       QJsonObject& languageObject)
{
    const QMutexLocker locker(&m_Mutex);
    const std::optional<QJsonObject> document = file.read(filePath);
    if (!document)
        return false;
    languageObject = *document;
    const bool hasContent = languageObject.contains(LanguageDefinitions::getJsonContentName());
    if (!hasContent)
        qWarning() << "No 'Content'-key found in language file:" << filePath;
    return hasContent;
}

QString TextManagerBase::fullText(const QString& textUrl, bool& ok,
                                  const QString& languageKey) const
{
    return answer(&TextManagerMemory::texts, textUrl, ok, languageKey, [&] {
        return getTextOrComment(m_LanguageMap, textUrl, ok, languageKey,
                                LanguageDefinitions::getJsonContentName(),
                                LanguageDefinitions::getJsonTextName());
    });
}

template<typename LookUp>
QString TextManagerBase::answer(AnswerMemory TextManagerMemory::*kind, const QString& textUrl,
                                bool& ok, const QString& languageKey, LookUp lookUp) const
{
    m_Memory->keepAnswersOnlyFor(m_LanguageMap, m_ShortLanguageMap);
    AnswerMemory& memory = (*m_Memory).*kind;
    if (const Answer* remembered = memory.find(languageKey, textUrl)) {
        ok = remembered->ok;
        return remembered->text;
    }
    // What was warned of has to be warned of each time, so it is looked up each time.
    const unsigned warningsBefore = LanguageInformationWarnings::countInThisThread();
    const QString text = lookUp();
    if (LanguageInformationWarnings::countInThisThread() == warningsBefore)
        memory.remember(languageKey, textUrl, {text, ok}, m_LanguageMap.contains(languageKey));
    return text;
}

QJsonObject TextManagerBase::documentOrFirstFallback(const QString& languageKey) const
{
    const QJsonObject languageObject = m_LanguageMap.value(languageKey);
    if (!languageObject.isEmpty())
        return languageObject;
    return m_LanguageMap.value(LanguageDefinitions::getFirstFallbackLanguageFilename());
}
