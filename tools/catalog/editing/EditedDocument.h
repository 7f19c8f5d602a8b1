#pragma once

#include "Finding.h"
#include "JsonTree.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMap>
#include <QString>

#include <optional>

/**
 * A language document that is being edited, and the bytes that it came from.
 *
 * Strings that are there already are best replaced in the tree, which costs little more than
 * reading it; everything else is done to the document.
 */
class EditedDocument
{
public:
    /** One that is new and empty. */
    EditedDocument() = default;

    /** Reads one. See fault() before it is edited. */
    explicit EditedDocument(const QByteArray& bytes);

    /** Why it cannot be edited without losing something, with the place; nothing when it can. */
    const std::optional<Finding>& fault() const { return m_Fault; }

    /** The fault with the path of the file, as a sentence; empty when there is none. */
    QString describeFault(const QString& path) const;

    /** The document as it stands in bytes, without what was done to document(). */
    const JsonTree& tree() const { return m_Tree; }

    /**
     * Replaces strings, and leaves all other bytes. The tree is another one then.
     *
     * @param strings by their nodes in tree(). To be called before document() is.
     */
    void replaceStrings(const QMap<int, QString>& strings);

    /** The document as it is to be stored. */
    QJsonObject& document();
    QJsonObject document() const;
    QJsonObject documentAsRead() const;
    /** Whether it may be another one than was read. */
    bool isTouched() const;

    /**
     * The bytes that hold the document: those that were read, with only what was changed replaced,
     * added and removed, in the layout that is around it. A new document has a member a line.
     *
     * @return nothing when they could not be read again as the same document.
     */
    std::optional<QByteArray> bytes() const;

private:
    QByteArray m_BytesAsRead;
    JsonTree m_Tree; ///< without nodes for a new one
    bool m_IsTreeRight = true;
    QJsonObject m_DocumentOfTree;          ///< as document() found it
    std::optional<QJsonObject> m_Document; ///< nothing as long as it is what the tree holds
    std::optional<Finding> m_Fault;
};
