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

#include <algorithm>

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

QString TextManagerBase::getText(const QString& textUrl, bool& ok, const QString& languageKey,
                                 bool skipLanguageSelection) const
{
    const QMutexLocker locker(&m_Mutex);
    const LookUpAnswer answer =
        fullAnswer(textUrl, skipLanguageSelection ? languageKey : chosenLanguage(languageKey));
    ok = answer.ok;
    return answer.text;
}

QString TextManagerBase::getText(const QString& textUrl, const QString& languageKey) const
{
    const QMutexLocker locker(&m_Mutex);
    return fullAnswer(textUrl, chosenLanguage(languageKey)).text;
}

QString TextManagerBase::getAnsweringLanguage(const QString& textUrl,
                                              const QString& languageKey) const
{
    const QMutexLocker locker(&m_Mutex);
    const QString& key = chosenLanguage(languageKey);
    const LookUpAnswer answer = fullAnswer(textUrl, key);
    return answer.text.isEmpty() ? QString()
                                 : LookUpDocuments(m_LanguageMap, key).keyAt(answer.lastStep);
}

QString TextManagerBase::getShortText(const QString& textUrl, bool& ok,
                                      const QString& languageKey) const
{
    const QMutexLocker locker(&m_Mutex);
    const LookUpAnswer answer = shortAnswer(textUrl, chosenLanguage(languageKey));
    ok = answer.ok;
    return answer.text;
}

QString TextManagerBase::getShortText(const QString& textUrl, const QString& languageKey) const
{
    const QMutexLocker locker(&m_Mutex);
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
    return chosenLanguage(languageKey);
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
    const LookUpAnswer answer = walk(languageMap, textUrl, languageKey, contentKey, valueKey);
    ok = answer.ok;
    return answer.text;
}

std::optional<QJsonObject> TextManagerBase::readFile(const QString& folderPath,
                                                     const QString& filePath, bool isRemembered)
{
    const QMutexLocker locker(&m_Mutex);
    return m_Memory->readFile(folderPath, filePath, isRemembered);
}

const QString& TextManagerBase::chosenLanguage(const QString& languageKey) const
{
    return languageKey.isEmpty() ? m_StrLanguageName : languageKey;
}

LookUpAnswer TextManagerBase::fullAnswer(const QString& textUrl, const QString& languageKey) const
{
    const LookUpDocuments documents(m_LanguageMap, languageKey);
    return remembered(m_Memory->texts, documents, textUrl, [&] {
        if (documents.isLanguageKnown())
            return walk(m_LanguageMap, textUrl, languageKey,
                        LanguageDefinitions::getJsonContentName(),
                        LanguageDefinitions::getJsonTextName());
        // The answers that are remembered for the first fallback language are its answers, too.
        LookUpAnswer answer =
            fullAnswer(textUrl, LanguageDefinitions::getFirstFallbackLanguageFilename());
        answer.lastStep = std::max(answer.lastStep, LookUpStep::FirstFallback);
        return answer;
    });
}

LookUpAnswer TextManagerBase::shortAnswer(const QString& textUrl, const QString& languageKey) const
{
    const LookUpDocuments documents(m_ShortLanguageMap, m_LanguageMap, languageKey);
    return remembered(m_Memory->shortTexts, documents, textUrl, [&] {
        LookUpAnswer answer;
        answer.lastStep = LookUpStep::ShortText;
        answer.text = getObjectFromMap(m_ShortLanguageMap, textUrl, answer.ok, languageKey,
                                       LanguageDefinitions::getJsonContentName(),
                                       LanguageDefinitions::getJsonTextName());
        if (answer.text.isEmpty()) {
            const LookUpAnswer full = fullAnswer(textUrl, languageKey);
            answer.text = full.text;
            answer.lastStep = full.lastStep;
        }
        return answer;
    });
}

template<typename LookUp>
LookUpAnswer TextManagerBase::remembered(AnswerMemory& memory, const LookUpDocuments& documents,
                                         const QString& textUrl, LookUp lookUp) const
{
    if (const LookUpAnswer* answer = memory.find(documents, textUrl))
        return *answer;
    // What was warned of has to be warned of each time, so it is looked up each time.
    const unsigned warningsBefore = LanguageInformationWarnings::countInThisThread();
    const LookUpAnswer answer = lookUp();
    if (LanguageInformationWarnings::countInThisThread() == warningsBefore)
        memory.remember(documents, textUrl, answer);
    return answer;
}

LookUpAnswer TextManagerBase::walk(const QMap<QString, QJsonObject>& languageMap,
                                   const QString& textUrl, const QString& languageKey,
                                   const QString& contentKey, const QString& valueKey) const
{
    const LookUpDocuments documents(languageMap, languageKey);
    LookUpAnswer answer;
    const auto lookUp = [&](LookUpStep step) {
        answer.lastStep = step;
        answer.text = getObjectFromMap(languageMap, textUrl, answer.ok, documents.keyAt(step),
                                       contentKey, valueKey);
    };
    lookUp(LookUpStep::WantedLanguage);
    // An empty text falls back as a missing one does: the result decides, not the flag.
    for (const LookUpStep step : {LookUpStep::FirstFallback, LookUpStep::SecondFallback}) {
        if (answer.text.isEmpty() && documents.keyAt(step) != languageKey)
            lookUp(step);
    }
    return answer;
}

QJsonObject TextManagerBase::documentOrFirstFallback(const QString& languageKey) const
{
    const QJsonObject languageObject = m_LanguageMap.value(languageKey);
    if (!languageObject.isEmpty())
        return languageObject;
    return m_LanguageMap.value(LanguageDefinitions::getFirstFallbackLanguageFilename());
}
