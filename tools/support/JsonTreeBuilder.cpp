#include "JsonTreeBuilder_p.h"

#include "JsonErrors_p.h"

#include <QHash>
#include <QMap>

#include <algorithm>
#include <utility>

namespace
{

constexpr std::size_t deepestLevel = 1024; // Qt's parser takes no more

const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");

bool isBetweenTokens(char byte)
{
    return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t' || byte == ',' ||
           byte == ':';
}

} // namespace

void JsonTreeBuilder::build(JsonTree& tree)
{
    JsonTreeBuilder(tree).run();
    if (tree.isSound()) {
        tree.m_Nodes.shrink_to_fit();
        std::sort(tree.m_RepeatedKeys.begin(), tree.m_RepeatedKeys.end());
        return;
    }
    tree.m_Nodes = {};
    tree.m_RepeatedKeys = {};
}

JsonTreeBuilder::JsonTreeBuilder(JsonTree& tree)
    : m_Tree(tree)
    , m_Start(tree.m_Bytes.startsWith(byteOrderMark) ? static_cast<int>(byteOrderMark.size()) : 0)
    , m_Stream(tree.m_Bytes.constData() + m_Start,
               static_cast<std::size_t>(tree.m_Bytes.size() - m_Start))
    , m_LastEnd(m_Start)
{
}

void JsonTreeBuilder::run()
{
    // Iterative: a deep text would overflow the stack. Numbers are kept as they are written.
    constexpr unsigned flags =
        rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
    // Encodings are checked in half the time before the parser, which is to name the first fault.
    const bool isUtf8 = findNoUtf8(m_Tree.m_Bytes) == m_Tree.m_Bytes.size();
    rapidjson::Reader reader;
    const rapidjson::ParseResult result =
        isUtf8 ? reader.Parse<flags>(m_Stream, *this)
               : reader.Parse<flags | rapidjson::kParseValidateEncodingFlag>(m_Stream, *this);
    if (m_Tree.m_Fault)
        return; // refused here
    if (result.IsError())
        m_Tree.m_Fault = describeJsonError(m_Tree.m_Bytes, result.Code(),
                                           m_Start + static_cast<int>(result.Offset()));
    else if (offset() < m_Tree.m_Bytes.size()) // the parser takes a NUL for the end
        m_Tree.m_Fault = describeJsonError(m_Tree.m_Bytes,
                                           rapidjson::kParseErrorDocumentRootNotSingular, offset());
    else if (m_Tree.typeOf(JsonTree::root) > JsonTree::Type::Array)
        refuse(m_Tree.at(JsonTree::root).valueBegin,
               QStringLiteral("found a value alone, expected '{'"));
}

int JsonTreeBuilder::beginOfToken() const
{
    int begin = m_LastEnd;
    while (isBetweenTokens(m_Tree.m_Bytes.at(begin)))
        ++begin;
    return begin;
}

bool JsonTreeBuilder::RawNumber(const char* digits, rapidjson::SizeType length, bool)
{
    bool isInRange = false;
    QByteArray(digits, static_cast<int>(length)).toDouble(&isInRange);
    return isInRange ? addScalar(JsonTree::Type::Number)
                     : refuse(offset() - static_cast<int>(length),
                              QStringLiteral("found a number out of range"));
}

bool JsonTreeBuilder::Key(const char* key, rapidjson::SizeType length, bool)
{
    m_Next.keyBegin = beginOfToken();
    m_Next.keyEnd = offset();
    m_Next.keyHash = static_cast<uint>(qHashBits(key, length));
    m_LastEnd = m_Next.keyEnd;
    return true;
}

bool JsonTreeBuilder::EndObject(rapidjson::SizeType)
{
    findRepeatedKeys(m_Levels.back().node);
    leave();
    return true;
}

bool JsonTreeBuilder::EndArray(rapidjson::SizeType)
{
    leave();
    return true;
}

int JsonTreeBuilder::addNode(JsonTree::Type type, int valueBegin, int valueEnd)
{
    const int node = m_Tree.size();
    m_Next.type = type;
    m_Next.valueBegin = valueBegin;
    m_Next.valueEnd = valueEnd;
    if (!m_Levels.empty()) {
        Level& level = m_Levels.back();
        m_Next.parent = level.node;
        if (level.lastChild != JsonTree::none)
            m_Tree.m_Nodes[static_cast<std::size_t>(level.lastChild)].nextSibling = node;
        level.lastChild = node;
    }
    m_Tree.m_Nodes.push_back(m_Next);
    m_Next = JsonTree::Node();
    m_LastEnd = valueEnd;
    return node;
}

bool JsonTreeBuilder::addScalar(JsonTree::Type type)
{
    addNode(type, beginOfToken(), offset());
    return true;
}

// The parser tells of containers before it takes their first and their last character.

bool JsonTreeBuilder::enter(JsonTree::Type type)
{
    if (m_Levels.size() == deepestLevel)
        return refuse(offset(), QStringLiteral("found more than %1 levels").arg(int(deepestLevel)));
    m_Levels.push_back({addNode(type, offset(), offset() + 1), JsonTree::none});
    return true;
}

void JsonTreeBuilder::leave()
{
    m_LastEnd = offset() + 1;
    m_Tree.m_Nodes[static_cast<std::size_t>(m_Levels.back().node)].valueEnd = m_LastEnd;
    m_Levels.pop_back();
}

bool JsonTreeBuilder::refuse(int offset, const QString& reason)
{
    const Place place = m_Tree.placeOf(offset);
    m_Tree.m_Fault =
        JsonFault{place.line, place.column, QStringLiteral("malformed JSON: ") + reason};
    return false;
}

void JsonTreeBuilder::findRepeatedKeys(int object)
{
    m_Members.clear();
    for (int member = m_Tree.firstChild(object); member != JsonTree::none;
         member = m_Tree.at(member).nextSibling)
        m_Members.push_back(member);
    const auto hashOf = [this](int member) { return m_Tree.at(member).keyHash; };
    std::sort(m_Members.begin(), m_Members.end(), [&](int one, int other) {
        return std::make_pair(hashOf(one), one) < std::make_pair(hashOf(other), other);
    });
    // Members of one hash stand together, and nearly always there is one of each.
    for (std::size_t first = 0; first < m_Members.size();) {
        std::size_t end = first + 1;
        while (end < m_Members.size() && hashOf(m_Members[end]) == hashOf(m_Members[first]))
            ++end;
        if (end - first > 1)
            findRepeatedKeys(first, end);
        first = end;
    }
}

void JsonTreeBuilder::findRepeatedKeys(std::size_t first, std::size_t end)
{
    QMap<QString, int> lastMembers; // in order, since a stranger may have made the hashes alike
    for (; first < end; ++first) {
        const int member = m_Members[first];
        const auto earlier = lastMembers.find(m_Tree.keyOf(member));
        if (earlier == lastMembers.end()) {
            lastMembers.insert(m_Tree.keyOf(member), member);
            continue;
        }
        markRepeated(*earlier, member);
        *earlier = member;
    }
}

void JsonTreeBuilder::markRepeated(int earlier, int later)
{
    m_Tree.m_Nodes[static_cast<std::size_t>(earlier)].isReplaced = true;
    m_Tree.m_RepeatedKeys.push_back(later);
}
