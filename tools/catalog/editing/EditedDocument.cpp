#include "EditedDocument.h"

#include "JsonRewriter.h"
#include "LanguageDocument.h"
#include "LanguageReading.h"

#include <QJsonDocument>

namespace
{

bool isContainer(JsonTree::Type type)
{
    return type == JsonTree::Type::Object || type == JsonTree::Type::Array;
}

/** Whether two trees differ in these strings only. */
bool isSameBut(const QMap<int, QString>& strings, const JsonTree& before, const JsonTree& after)
{
    if (!after.isSound() || after.size() != before.size())
        return false;
    auto string = strings.begin();
    for (int node = 0; node < before.size(); ++node) {
        const JsonTree::Type type = before.typeOf(node);
        const bool isReplaced = string != strings.end() && string.key() == node;
        const bool isSame =
            isReplaced ? after.stringOf(node) == *string
                       : isContainer(type) || after.valueBytes(node) == before.valueBytes(node);
        if (!isSame || after.typeOf(node) != type ||
            after.at(node).parent != before.at(node).parent ||
            after.at(node).keyHash != before.at(node).keyHash)
            return false;
        if (isReplaced)
            ++string;
    }
    return true;
}

} // namespace

EditedDocument::EditedDocument(const QByteArray& bytes)
    : m_BytesAsRead(bytes)
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

void EditedDocument::replaceStrings(const QMap<int, QString>& strings)
{
    if (strings.isEmpty())
        return;
    const JsonTree before = m_Tree;
    m_Tree = JsonTree(JsonRewriter::replaceStrings(before, strings));
    m_IsTreeRight = m_IsTreeRight && isSameBut(strings, before, m_Tree);
}

QJsonObject& EditedDocument::document()
{
    if (!m_Document)
        m_Document = m_DocumentOfTree = parseLanguage(m_Tree.bytes());
    return *m_Document;
}

QJsonObject EditedDocument::document() const
{
    return m_Document ? *m_Document : parseLanguage(m_Tree.bytes());
}

QJsonObject EditedDocument::documentAsRead() const
{
    return parseLanguage(m_BytesAsRead);
}

bool EditedDocument::isTouched() const
{
    return m_Document || m_Tree.bytes() != m_BytesAsRead;
}

std::optional<QByteArray> EditedDocument::bytes() const
{
    if (!m_IsTreeRight)
        return std::nullopt;
    if (!m_Document)
        return m_Tree.bytes();
    const bool isNew = m_Tree.bytes().isNull();
    const QByteArray bytes = isNew ? QJsonDocument(*m_Document).toJson(QJsonDocument::Indented)
                                   : JsonRewriter(m_Tree).rewrite(m_DocumentOfTree, *m_Document);
    // Qt's parser orders some keys beyond U+FFFF otherwise than the members of an object.
    const QJsonObject asParsed =
        parseLanguage(QJsonDocument(*m_Document).toJson(QJsonDocument::Compact));
    if (parseLanguage(bytes) != asParsed || !JsonTree(bytes).isSound())
        return std::nullopt;
    return bytes;
}
