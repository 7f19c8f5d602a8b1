#pragma once

#include "AnswerTable_p.h"
#include "LookUpDocuments_p.h"

#include <QHash>
#include <QJsonObject>
#include <QString>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>

/**
 * Answers of one kind of look-up by language and text URL, so that a text that is asked for again
 * costs one probe of a hash instead of a walk through documents.
 *
 * It shares the documents that an answer was read from, and gives the answer only while the maps
 * hold these. A document that is shared is copied before it is changed, so every change, also one
 * that a subclass makes through a reference or an iterator, puts another document in its place. The
 * maps themselves it never shares: they stay a subclass's plain members.
 *
 * Its size is bounded whatever is asked for. Texts are all kept, those of a fallback language once
 * for each language that was asked for: there can be no more of them than URLs in the documents
 * times languages. Of texts that are missing, whose URLs a client could make up without end, only
 * so many are kept, and none that is long. No string of a caller is shared: it may be large, or end
 * with its buffer.
 */
class AnswerMemory
{
public:
    /** The remembered answer, until the next call of any operation; null when there is none. */
    const LookUpAnswer* find(const LookUpDocuments& documents, const QString& textUrl)
    {
        const Language* const language = findLanguage(documents.languageKey());
        if (language == nullptr)
            return nullptr;
        const LookUpAnswer* answer = language->answers.find(textUrl);
        if (answer == nullptr)
            answer = findMissing(documents.languageKey(), textUrl);
        const bool isValid = answer != nullptr && language->isReadFrom(documents, answer->lastStep);
        return isValid ? answer : nullptr;
    }
    /** Takes in an answer that was not found, unless a client could make up the language. */
    void remember(const LookUpDocuments& documents, const QString& textUrl,
                  const LookUpAnswer& answer);
    void clear();

private:
    struct Language {
        /** Whether the documents up to @p lastStep are those that the answers were read from. */
        bool isReadFrom(const LookUpDocuments& documents, LookUpStep lastStep) const
        {
            auto i = indexOf(documents.firstStep());
            while (i <= indexOf(lastStep) &&
                   isSame(documents.at(static_cast<LookUpStep>(i)), sources[i]))
                ++i;
            return i > indexOf(lastStep);
        }
        void beginAnew(const LookUpDocuments& documents);

        std::array<QJsonObject, 4> sources; ///< one for each step; empty where there is none
        AnswerTable answers;
    };
    static std::size_t indexOf(LookUpStep step) { return static_cast<std::size_t>(step); }
    /**
     * Whether a document shares its data with that source, and so is equal; told in constant time.
     *
     * A QJsonObject is nothing but the pointer to its data, in Qt 5 beside one that is always null.
     * Qt does not tell whether two are the same: its comparison goes through both documents where
     * they are not.
     */
    static bool isSame(const QJsonObject* document, const QJsonObject& source)
    {
        if (document == nullptr)
            return source.isEmpty();
        // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): the pointers are what is compared
        return std::memcmp(document, &source, sizeof source) == 0;
    }
    /** Where a language was found last, so that it is found without a search. */
    struct RecentLanguage {
        QString key;
        const Language* language = nullptr;
    };

    struct Question {
        QString languageKey;
        QString textUrl;
        bool operator==(const Question& other) const
        {
            return textUrl == other.textUrl && languageKey == other.languageKey;
        }
    };
    using HashValue = decltype(qHash(QString()));
    friend HashValue qHash(const Question& question, HashValue seed);

    const Language* findLanguage(const QString& key)
    {
        const RecentLanguage& recent = recentSlot(key);
        // Compared here: for a handful of letters the call would take longer than the comparison.
        const bool isFound = recent.language != nullptr && recent.key.size() == key.size() &&
                             std::equal(recent.key.cbegin(), recent.key.cend(), key.cbegin());
        return isFound ? recent.language : findLanguageAnew(key);
    }
    RecentLanguage& recentSlot(const QString& key)
    {
        // Languages differ in their first letters: de_DE, en_US, fr_FR.
        const unsigned first = key.isEmpty() ? 0 : key.at(0).unicode();
        return m_RecentLanguages[first % m_RecentLanguages.size()];
    }
    const Language* findLanguageAnew(const QString& key);
    const LookUpAnswer* findMissing(const QString& languageKey, const QString& textUrl) const;
    void rememberMissing(const QString& languageKey, const QString& textUrl,
                         const LookUpAnswer& answer);

    std::map<QString, Language> m_Languages;
    QHash<Question, LookUpAnswer> m_Missing;
    std::array<RecentLanguage, 16> m_RecentLanguages;
};
