#pragma once

#include "Finding.h"
#include "JsonTree.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <vector>

/**
 * A language file as it is stored: its texts with their places, and all that is wrong with it.
 *
 * The bytes are the file's own, carriage returns and byte order mark among them; a text manager
 * reads it the same. Nodes are those of the tree. Of keys that are repeated only the last counts.
 */
class LanguageDocument
{
public:
    /** A node whose text and comment are strings: what has a URL that is listed. */
    struct TextNode {
        int node = JsonTree::none;
        int text = JsonTree::none;
        int comment = JsonTree::none;
    };

    LanguageDocument() = default;
    explicit LanguageDocument(const QByteArray& bytes);

    /** Without nodes when the file is malformed. */
    const JsonTree& tree() const { return m_Tree; }
    /** Whether a text manager loads it: some of what is malformed here is none to Qt. */
    bool isLoaded() const { return m_IsLoaded; }

    /** "Content", if it is an object; none otherwise. */
    int contentNode() const { return m_Content; }
    /** The string of a field in the header; none when it is missing. */
    int headerField(const QString& field) const;

    /** All text nodes in the order of the file. Their URLs are those that a text manager lists. */
    const std::vector<TextNode>& textNodes() const { return m_TextNodes; }
    /** The URL of any node below "Content", made as a text manager makes it. */
    QString urlOf(int node) const;
    QString textOf(const TextNode& node) const { return m_Tree.stringOf(node.text); }
    QString commentOf(const TextNode& node) const { return m_Tree.stringOf(node.comment); }

    /** Whether the members of the node have URLs of their own: it is "Content", or the "childs" of
     * a node. */
    bool isContainer(int node) const;

    /**
     * The faults of the file, each an error with its place, in the order of the text: one that
     * makes it malformed alone, no "Content", values of a wrong type, repeated keys. File and
     * language are left empty.
     */
    QVector<Finding> findFaults() const;

private:
    void walkContent();
    void walkMember(int node);
    int behind(int node) const;
    Finding faultAt(int node, int offset, const QString& id, const QString& reason) const;
    QVector<Finding> findMalformed() const;
    QVector<Finding> findWrongTypes() const;
    QString describeTop() const;
    bool isBelowContent(int node) const;

    JsonTree m_Tree;
    bool m_IsLoaded = false;
    int m_Content = JsonTree::none;
    std::vector<TextNode> m_TextNodes;
    std::vector<int> m_WrongTypes; ///< members of nodes and containers
};
