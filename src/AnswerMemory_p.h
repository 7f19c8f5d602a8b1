#pragma once

#include "AnswerTable_p.h"

#include <QHash>
#include <QString>

#include <algorithm>
#include <array>
#include <unordered_map>

/**
 * Answers of one kind of look-up by language and text URL, so that a text that is asked for again
 * costs one probe of a hash instead of a walk through documents.
 *
 * Its size is bounded whatever is asked for. Texts of loaded languages are all kept, those of a
 * fallback language once for each language that was asked for: there can be no more of them than
 * URLs in the documents times languages. Of everything else (texts that are missing, languages that
 * are not loaded), which a client could make up without end, only so many are kept, and none that
 * is long. No string of a caller is shared: it may be large, or end with its buffer.
 */
class AnswerMemory
{
public:
    /** The remembered answer, until the next call of any operation; null when there is none. */
    const Answer* find(const QString& languageKey, const QString& textUrl)
    {
        if (const AnswerTable* texts = findTexts(languageKey)) {
            if (const Answer* text = texts->find(textUrl))
                return text;
        }
        return findOther(languageKey, textUrl);
    }
    void remember(const QString& languageKey, const QString& textUrl, const Answer& answer,
                  bool isLanguageLoaded);
    void clear();

private:
    /** Where the texts of a language were found last, so that they are found without a hash. */
    struct RecentLanguage {
        QString key;
        const AnswerTable* texts = nullptr;
    };

    struct Question {
        QString languageKey;
        QString textUrl;
        bool operator==(const Question& other) const
        {
            return textUrl == other.textUrl && languageKey == other.languageKey;
        }
    };
    /** Not Qt's, with which a client could make up many questions of one hash. */
    friend uint qHash(const Question& question, uint seed);

    const AnswerTable* findTexts(const QString& languageKey)
    {
        const RecentLanguage& recent = recentSlot(languageKey);
        // Compared here: for a handful of letters the call would take longer than the comparison.
        const bool isFound =
            recent.texts != nullptr && recent.key.size() == languageKey.size() &&
            std::equal(recent.key.cbegin(), recent.key.cend(), languageKey.cbegin());
        return isFound ? recent.texts : findTextsAnew(languageKey);
    }
    RecentLanguage& recentSlot(const QString& languageKey)
    {
        // Languages differ in their first letters: de_DE, en_US, fr_FR.
        const unsigned first = languageKey.isEmpty() ? 0 : languageKey.at(0).unicode();
        return m_RecentLanguages[first % m_RecentLanguages.size()];
    }
    const AnswerTable* findTextsAnew(const QString& languageKey);
    const Answer* findOther(const QString& languageKey, const QString& textUrl) const;

    std::unordered_map<QString, AnswerTable> m_Texts;
    QHash<Question, Answer> m_Others;
    std::array<RecentLanguage, 16> m_RecentLanguages;
};
