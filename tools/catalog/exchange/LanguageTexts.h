#pragma once

#include "LanguageDocument.h"

#include <QHash>
#include <QString>
#include <QVector>

/** The texts of one language file by their URLs. */
class LanguageTexts
{
public:
    struct Entry {
        QString url;
        QString text;
        QString comment;
    };

    /** No texts. */
    LanguageTexts() = default;
    explicit LanguageTexts(const LanguageDocument& document);

    /** All texts in the order of the file. */
    const QVector<Entry>& entries() const { return m_Entries; }
    bool contains(const QString& url) const { return m_Indexes.contains(url); }
    /** The text at a URL; empty where there is none. */
    QString text(const QString& url) const { return entry(url).text; }
    QString comment(const QString& url) const { return entry(url).comment; }

private:
    const Entry& entry(const QString& url) const;

    QVector<Entry> m_Entries;
    QHash<QString, int> m_Indexes; ///< of the entries, by URL
};
