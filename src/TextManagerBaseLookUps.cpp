// What is asked for each text: compiled for speed, unlike the rest of the class.

#include "TextManagerBase.h"

#include "LanguageDefinitions.h"
#include "LanguageInformation.h"
#include "LanguageInformation_p.h"
#include "TextManagerMemory_p.h"

#include <QMutexLocker>

#include <algorithm>

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
