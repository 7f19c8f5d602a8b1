#pragma once

#include "Finding.h"
#include "JsonTree.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

/** A language document that is being edited, and the bytes that it came from. */
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

    /** The document as it was read, and as it is to be stored. */
    QJsonObject& document() { return m_Document; }
    const QJsonObject& document() const { return m_Document; }

    /**
     * The bytes that hold the document: those that were read, with only what was changed replaced,
     * added and removed, in the layout that is around it. A new document has a member a line.
     *
     * @return nothing when they could not be read again as the same document.
     */
    std::optional<QByteArray> bytes() const;

private:
    JsonTree m_Tree; ///< without nodes for a new one
    QJsonObject m_DocumentAsRead;
    QJsonObject m_Document;
    std::optional<Finding> m_Fault;
};
