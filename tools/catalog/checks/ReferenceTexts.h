#pragma once

#include "DocumentTexts.h"
#include "TextChecks.h"
#include "TextKey.h"

#include <QHash>
#include <QString>

#include <vector>

/**
 * The texts that those of other languages are held against: the base's, and what only POSIX has.
 */
class ReferenceTexts
{
public:
    struct Entry {
        Entry(const QString& textUrl, const QString& text, const QString& commentOfText);

        QString url;
        AnalyzedText analyzed; ///< of an empty text, nothing is compared
        QString comment;
        bool isOfBase = true;
        bool isListed = false; ///< whether it is a text node of the base, of which coverage speaks
    };
    static constexpr int none = -1;

    /** Adds what is not there yet, or is empty there. */
    void add(const DocumentTexts& texts, bool isOfBase);
    /** Finds the texts that are the same. To be called when all are added. */
    void settle();

    const std::vector<Entry>& entries() const { return m_Entries; }
    const Entry& at(int index) const { return m_Entries[static_cast<std::size_t>(index)]; }
    int size() const { return static_cast<int>(m_Entries.size()); }
    /** Index of the text of a URL; none when there is none. */
    int find(const QString& url) const { return m_Indexes.value(url, none); }
    /** The text of a URL; empty when there is none. */
    QString textOf(const QString& url) const;
    int listedCount() const;
    QStringList urls() const;

    /** Indexes of the base's texts that are the same, two or more each time. */
    const std::vector<std::vector<int>>& sameTexts() const { return m_SameTexts; }

private:
    std::vector<Entry> m_Entries;
    QHash<TextKey, int> m_Indexes;
    std::vector<std::vector<int>> m_SameTexts;
};
