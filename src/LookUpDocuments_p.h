#pragma once

#include "LanguageDefinitions.h"

#include <QJsonObject>
#include <QMap>
#include <QString>

/** What a look-up tries, one after the other. A look-up of full texts begins with the second. */
enum class LookUpStep : quint8 { ShortText, WantedLanguage, FirstFallback, SecondFallback };

/** The documents that look-ups for one wanted language try, as the maps hold them at this moment.
 */
class LookUpDocuments
{
public:
    using Documents = QMap<QString, QJsonObject>;

    LookUpDocuments(const Documents& texts, const QString& languageKey)
        : LookUpDocuments(texts, texts, languageKey, LookUpStep::WantedLanguage)
    {
    }
    LookUpDocuments(const Documents& shortTexts, const Documents& texts, const QString& languageKey)
        : LookUpDocuments(shortTexts, texts, languageKey, LookUpStep::ShortText)
    {
    }

    const QString& languageKey() const { return m_LanguageKey; }
    LookUpStep firstStep() const { return m_FirstStep; }

    /** Whether the language is one of the few that are loaded or are fallback languages. */
    bool isLanguageKnown() const
    {
        return at(m_FirstStep) != nullptr || m_LanguageKey == keyAt(LookUpStep::FirstFallback) ||
               m_LanguageKey == keyAt(LookUpStep::SecondFallback);
    }
    /** The document that is tried in that step; null when there is none. */
    const QJsonObject* at(LookUpStep step) const
    {
        const Documents& documents = step == LookUpStep::ShortText ? m_ShortTexts : m_Texts;
        const auto document = documents.constFind(keyAt(step));
        return document == documents.constEnd() ? nullptr : &document.value();
    }
    const QString& keyAt(LookUpStep step) const
    {
        switch (step) {
        case LookUpStep::FirstFallback:
            return LanguageDefinitions::getFirstFallbackLanguageFilename();
        case LookUpStep::SecondFallback:
            return LanguageDefinitions::getSecondFallbackLanguageFilename();
        case LookUpStep::ShortText:
        case LookUpStep::WantedLanguage:
            break;
        }
        return m_LanguageKey;
    }

private:
    LookUpDocuments(const Documents& shortTexts, const Documents& texts, const QString& languageKey,
                    LookUpStep firstStep)
        : m_ShortTexts(shortTexts)
        , m_Texts(texts)
        , m_LanguageKey(languageKey)
        , m_FirstStep(firstStep)
    {
    }

    const Documents& m_ShortTexts;
    const Documents& m_Texts;
    const QString& m_LanguageKey;
    const LookUpStep m_FirstStep;
};
