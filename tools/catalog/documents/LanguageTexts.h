#pragma once

#include "JsonTree.h"

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
        bool isListed = false;     ///< whether it has a comment, and so is listed as a text
        int node = JsonTree::none; ///< of the text, where it comes from a tree
    };

    /** No texts. */
    LanguageTexts() = default;
    explicit LanguageTexts(const QJsonObject& document);
    /** @param tree sound; without nodes it has no texts. */
    explicit LanguageTexts(const JsonTree& tree);

    /** All texts: of an object each group in the order of the keys, of a tree as they stand. */
    const QVector<Entry>& entries() const { return m_Entries; }
    bool contains(const QString& url) const { return m_Indexes.contains(url); }
    /** The entry at a URL; an empty one where there is none. */
    const Entry& entry(const QString& url) const;
    QString text(const QString& url) const { return entry(url).text; }
    QString comment(const QString& url) const { return entry(url).comment; }

private:
    void addNodes(const QString& prefix, const QJsonObject& nodes);
    void addNode(const QString& url, const QJsonObject& node);
    void addNodes(const QString& prefix, const JsonTree& tree, int nodes);
    void addNode(const QString& url, const JsonTree& tree, int node);
    void indexEntries();

    QVector<Entry> m_Entries;
    QHash<QString, int> m_Indexes; ///< of the entries, by URL
};
Q_DECLARE_TYPEINFO(LanguageTexts::Entry, Q_MOVABLE_TYPE);
