#include "EditedDocument.h"

#include "JsonRewriter.h"
#include "LanguageDocument.h"
#include "LanguageReading.h"

#include <QJsonDocument>

#include <cstring>

namespace
{

/** Whether a node has the same key, and the same value, or the same place of its members. */
bool isSameNode(const JsonTree& before, const JsonTree& after, int node)
{
    const JsonTree::Node& one = before.at(node);
    const JsonTree::Node& other = after.at(node);
    const auto isAlike = [&](int begin, int end, int otherBegin, int otherEnd) {
        return end - begin == otherEnd - otherBegin &&
               std::memcmp(before.bytes().constData() + begin,
                           after.bytes().constData() + otherBegin,
                           static_cast<std::size_t>(end - begin)) == 0;
    };
    const bool isContainer = one.type <= JsonTree::Type::Array;
    return one.type == other.type && one.parent == other.parent &&
           isAlike(one.keyBegin, one.keyEnd, other.keyBegin, other.keyEnd) &&
           (isContainer || isAlike(one.valueBegin, one.valueEnd, other.valueBegin, other.valueEnd));
}

/** Whether two trees differ in these strings only. */
bool isSameBut(const QMap<int, QString>& strings, const JsonTree& before, const JsonTree& after)
{
    if (!after.isSound() || after.size() != before.size())
        return false;
    auto string = strings.begin();
    for (int node = 0; node < before.size(); ++node) {
        const bool isReplaced = string != strings.end() && string.key() == node;
        const bool isRight = isReplaced ? after.isString(node) && after.stringOf(node) == *string
                                        : isSameNode(before, after, node);
        if (!isRight)
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
