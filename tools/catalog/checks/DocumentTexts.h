#pragma once

#include "LanguageDocument.h"

#include <QString>
#include <QStringList>

#include <vector>

/**
 * The texts of a language file as a look-up reaches them, whether or not they have a comment, and
 * what none reaches.
 *
 * The document must outlive it.
 */
class DocumentTexts
{
public:
    struct Entry {
        QString url;
        int text = JsonTree::none;    ///< a string
        int comment = JsonTree::none; ///< a string; none when it is missing or no string
        bool isCommentBroken = false; ///< whether there is one that is no string
    };
    struct Unreachable {
        int node = JsonTree::none;
        QString url; ///< of the node as it would be
        QString reason;
    };

    explicit DocumentTexts(const LanguageDocument& document);

    const std::vector<Entry>& entries() const { return m_Entries; }
    const std::vector<Unreachable>& unreachable() const { return m_Unreachable; }

    /** Whether something of a wrong type stands where the text of the URL or what is above it
     * should be: that is the fault, and not that the text is missing. */
    bool isBroken(const QString& url) const;

    QString textOf(const Entry& entry) const { return m_Tree.stringOf(entry.text); }
    QString commentOf(const Entry& entry) const { return m_Tree.stringOf(entry.comment); }

private:
    void walkContainer(int container, const QString& prefix);
    void walkNode(int node, const QString& url);
    void walkOthers(int node, const QString& url, bool hasChilds);
    void walkMember(int member, const QString& url);
    bool isOfNode(int member) const;

    const JsonTree& m_Tree;
    std::vector<Entry> m_Entries;
    std::vector<Unreachable> m_Unreachable;
    QStringList m_BrokenTexts;
    QStringList m_BrokenNodes; ///< that should have texts below them
};

/** Place of the character at @p offset of a string in a JSON text, however it is written there. */
Place placeInString(const JsonTree& tree, int node, int offset);
