#include "JsonRewriter.h"

#include <algorithm>

JsonRewriter::JsonRewriter(const JsonTree& tree)
    : m_Tree(tree)
    , m_Layout(tree)
{
}

QByteArray JsonRewriter::replaceStrings(const JsonTree& tree, const QMap<int, QString>& strings)
{
    QByteArray out;
    out.reserve(tree.bytes().size());
    int end = 0; // of what is written
    for (auto string = strings.begin(); string != strings.end(); ++string) {
        const JsonTree::Node& node = tree.at(string.key());
        out.append(tree.bytes().constData() + end, node.valueBegin - end);
        out += JsonLayout::textOf(string.value());
        end = node.valueEnd;
    }
    return out.append(tree.bytes().constData() + end, tree.bytes().size() - end);
}

QByteArray JsonRewriter::rewrite(const QJsonObject& asRead, const QJsonObject& wanted)
{
    const JsonTree::Node& top = m_Tree.at(JsonTree::root);
    m_Out.clear();
    m_Out.reserve(m_Tree.bytes().size());
    m_Out += bytes(0, top.valueBegin);
    writeObject(JsonTree::root, asRead, wanted);
    m_Out += bytes(top.valueEnd, static_cast<int>(m_Tree.bytes().size()));
    return m_Out;
}

void JsonRewriter::writeObject(int object, const QJsonObject& asRead, const QJsonObject& wanted)
{
    const JsonTree::Node& node = m_Tree.at(object);
    const std::vector<Member> members = membersOf(object, asRead, wanted);
    if (members.empty()) {
        m_Out += asRead.isEmpty() ? bytes(node.valueBegin, node.valueEnd) : QByteArrayLiteral("{}");
        return;
    }
    const bool isGrown = std::any_of(members.begin(), members.end(),
                                     [](const Member& m) { return m.node == JsonTree::none; });
    const ObjectStyle style = isGrown ? m_Layout.styleOf(object) : ObjectStyle();
    const int first = m_Tree.firstChild(object);
    int end = node.valueBegin + 1; // of the last member that was read, or before them
    for (const Member& member : members) {
        const bool isFirst = &member == &members.front();
        if (member.node == JsonTree::none) {
            m_Out += (isFirst ? '{' + style.opening : style.separator) +
                     JsonLayout::textOf(member.key) + style.colon +
                     m_Layout.textOf(wanted.value(member.key), object);
            continue;
        }
        const JsonTree::Node& stored = m_Tree.at(member.node);
        if (isFirst)
            m_Out += '{' + bytes(node.valueBegin + 1, m_Tree.at(first).keyBegin);
        else
            m_Out +=
                member.node == first ? style.separator : bytes(member.endBefore, stored.keyBegin);
        m_Out += bytes(stored.keyBegin, stored.valueBegin);
        writeValue(member, object, asRead.value(member.key), wanted.value(member.key));
    }
    for (int member = first; member != JsonTree::none; member = m_Tree.at(member).nextSibling)
        end = m_Tree.at(member).valueEnd;
    m_Out += first == JsonTree::none ? style.closing + '}' : bytes(end, node.valueEnd);
}

void JsonRewriter::writeValue(const Member& member, int object, const QJsonValue& asRead,
                              const QJsonValue& wanted)
{
    const JsonTree::Node& stored = m_Tree.at(member.node);
    if (asRead.isObject() && wanted.isObject())
        writeObject(member.node, asRead.toObject(), wanted.toObject());
    else if (asRead == wanted)
        m_Out += bytes(stored.valueBegin, stored.valueEnd);
    else
        m_Out += m_Layout.textOf(wanted, object);
}

/** The wanted members in their order. */
std::vector<JsonRewriter::Member> JsonRewriter::membersOf(int object, const QJsonObject& asRead,
                                                          const QJsonObject& wanted) const
{
    std::vector<Member> members;
    bool isAscending = true;
    int endBefore = m_Tree.at(object).valueBegin + 1;
    QString keyBefore;
    for (int node = m_Tree.firstChild(object); node != JsonTree::none;
         node = m_Tree.at(node).nextSibling) {
        const QString key = m_Tree.keyOf(node);
        isAscending =
            isAscending && (endBefore == m_Tree.at(object).valueBegin + 1 || keyBefore < key);
        if (wanted.contains(key))
            members.push_back({key, node, endBefore});
        keyBefore = key;
        endBefore = m_Tree.at(node).valueEnd;
    }
    const std::size_t stored = members.size();
    for (auto member = wanted.begin(); member != wanted.end(); ++member) {
        if (!asRead.contains(member.key()))
            members.push_back({member.key(), JsonTree::none, 0});
    }
    if (isAscending)
        std::inplace_merge(
            members.begin(), members.begin() + static_cast<std::ptrdiff_t>(stored), members.end(),
            [](const Member& one, const Member& other) { return one.key < other.key; });
    return members;
}
