#pragma once

#include "TextKey.h"

#include <QHash>
#include <QJsonObject>
#include <QString>
#include <QVector>

/** The texts of one language document by their URLs, as a look-up finds them. */
class LanguageTexts
{
public:
    struct Entry {
        QString url;
        QString text;
        QString comment;
        bool isListed = false; ///< whether it has a comment, and so is listed as a text
    };

    /** No texts. */
    LanguageTexts() = default;
    explicit LanguageTexts(const QJsonObject& document);

    /** All texts, each group of them in the order of the keys. */
    const QVector<Entry>& entries() const { return m_Entries; }
    bool contains(const QString& url) const { return m_Indexes.contains(url); }
    /** The text at a URL; empty where there is none. */
    QString text(const QString& url) const { return entry(url).text; }
    QString comment(const QString& url) const { return entry(url).comment; }

private:
    const Entry& entry(const QString& url) const;
    void addNodes(const QString& prefix, const QJsonObject& nodes);
    void addNode(const QString& url, const QJsonObject& node);

    QVector<Entry> m_Entries;
    QHash<TextKey, int> m_Indexes; ///< of the entries, by URL
};
Q_DECLARE_TYPEINFO(LanguageTexts::Entry, Q_MOVABLE_TYPE);
