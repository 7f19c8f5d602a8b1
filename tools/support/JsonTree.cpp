#include "JsonTree.h"

#include "JsonTreeBuilder_p.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

#include <algorithm>

QString JsonFault::in(const QString& name) const
{
    return QStringLiteral("%1:%2:%3: %4")
        .arg(name, QString::number(line), QString::number(column), reason);
}

JsonKey::JsonKey(const QString& key)
    : bytes(key.toUtf8())
    , hash(static_cast<uint>(qHashBits(bytes.constData(), static_cast<std::size_t>(bytes.size()))))
{
}

JsonTree::JsonTree(const QByteArray& bytes)
    : m_Bytes(bytes)
{
    JsonTreeBuilder::build(*this);
}

int JsonTree::firstChild(int node) const
{
    return node + 1 < size() && at(node + 1).parent == node ? node + 1 : none;
}

int JsonTree::child(int node, const JsonKey& key) const
{
    if (!isObject(node))
        return none;
    for (int member = firstChild(node); member != none; member = at(member).nextSibling) {
        if (!at(member).isReplaced && hasKey(member, key))
            return member;
    }
    return none;
}

bool JsonTree::hasKey(int node, const JsonKey& key) const
{
    const Node& member = at(node);
    if (member.keyHash != key.hash || member.keyBegin == member.keyEnd)
        return false;
    const int length = member.keyEnd - member.keyBegin - 2; // without the quotation marks
    const bool isSpelledAlike =
        length == key.bytes.size() &&
        std::equal(key.bytes.begin(), key.bytes.end(), m_Bytes.constData() + member.keyBegin + 1);
    return isSpelledAlike || keyOf(node).toUtf8() == key.bytes;
}

QString JsonTree::stringOf(int node) const
{
    return isString(node) ? decode(at(node).valueBegin, at(node).valueEnd) : QString();
}

QByteArray JsonTree::valueBytes(int node) const
{
    return m_Bytes.mid(at(node).valueBegin, at(node).valueEnd - at(node).valueBegin);
}

QString JsonTree::pathOf(int node) const
{
    QStringList keys;
    for (; node > root; node = at(node).parent) {
        const QString key = keyOf(node);
        if (at(node).keyEnd > at(node).keyBegin)
            keys.prepend(key.isEmpty() ? QStringLiteral("\"\"") : key);
    }
    return keys.join(QLatin1Char('/'));
}

QString JsonTree::decode(int begin, int end) const
{
    if (begin == end)
        return QString();
    const QByteArray quoted = QByteArray::fromRawData(m_Bytes.constData() + begin, end - begin);
    if (quoted.contains('\\'))
        return QJsonDocument::fromJson('[' + quoted + ']').array().first().toString();
    if (quoted.startsWith("\"\xEF\xBB\xBF")) // Qt drops the mark where a text begins with it
        return QString::fromUtf8(quoted).mid(1).chopped(1);
    return QString::fromUtf8(quoted.constData() + 1, quoted.size() - 2);
}
