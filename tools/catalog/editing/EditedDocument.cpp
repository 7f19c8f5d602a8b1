#include "EditedDocument.h"

#include "JsonRewriter.h"
#include "LanguageDocument.h"

#include <QJsonDocument>

namespace
{

/** Parsed as a text manager reads it: in text mode, which knows no carriage returns. */
QJsonObject parsed(QByteArray bytes)
{
    return QJsonDocument::fromJson(bytes.replace('\r', QByteArray())).object();
}

} // namespace

EditedDocument::EditedDocument(const QByteArray& bytes)
{
    const LanguageDocument stored(bytes);
    m_Tree = stored.tree();
    // What has a wrong type is left as it is, and can be corrected by an edit.
    for (const Finding& fault : stored.findFaults()) {
        if (fault.id != QLatin1String("wrong-type")) {
            m_Fault = fault;
            return;
        }
    }
    m_DocumentAsRead = parsed(bytes);
    m_Document = m_DocumentAsRead;
}

QString EditedDocument::describeFault(const QString& path) const
{
    if (!m_Fault)
        return QString();
    const QString& reason = m_Fault->reason;
    return QStringLiteral("%1:%2:%3: %4")
        .arg(path, QString::number(m_Fault->place.line), QString::number(m_Fault->place.column),
             reason);
}

std::optional<QByteArray> EditedDocument::bytes() const
{
    const bool isNew = m_Tree.bytes().isNull();
    const QByteArray bytes = isNew ? QJsonDocument(m_Document).toJson(QJsonDocument::Indented)
                                   : JsonRewriter(m_Tree).rewrite(m_DocumentAsRead, m_Document);
    // Qt's parser orders some keys beyond U+FFFF otherwise than the members of an object.
    const QJsonObject asParsed = parsed(QJsonDocument(m_Document).toJson(QJsonDocument::Compact));
    if (parsed(bytes) != asParsed || !JsonTree(bytes).isSound())
        return std::nullopt;
    return bytes;
}
