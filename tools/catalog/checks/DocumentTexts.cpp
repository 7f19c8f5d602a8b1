#include "DocumentTexts.h"

#include "LanguageDefinitions.h"

#include <algorithm>

namespace
{

const JsonKey& textKey()
{
    static const JsonKey key = LanguageDefinitions::getJsonTextName();
    return key;
}

const JsonKey& commentKey()
{
    static const JsonKey key = LanguageDefinitions::getJsonCommentName();
    return key;
}

const JsonKey& childsKey()
{
    static const JsonKey key = LanguageDefinitions::getJsonChildsKey();
    return key;
}

/** Why a key is in no URL, or in another one than it should be; empty when all is well. */
QString findFaultOf(const QString& key)
{
    if (key.isEmpty())
        return QStringLiteral("The key is empty. Give it a name.");
    if (key.contains(LanguageDefinitions::getUrlSeparator()))
        return QStringLiteral("The key \"%1\" holds a \"/\", at which URLs are split. Rename it.")
            .arg(key);
    if (key.startsWith(LanguageDefinitions::getJsonChildsKey()))
        return QStringLiteral(
                   "The key \"%1\" begins with \"childs\", which lists of URLs leave out. "
                   "Rename it.")
            .arg(key);
    return QString();
}

/** How many bytes of a JSON string one character takes that is written there, escaped or not. */
int bytesOfCharacter(const QByteArray& bytes, int at)
{
    if (bytes.at(at) == '\\')
        return at + 1 < bytes.size() && bytes.at(at + 1) == 'u' ? 6 : 2;
    int size = 1;
    while (at + size < bytes.size() && (bytes.at(at + size) & 0xC0) == 0x80)
        ++size;
    return size;
}

} // namespace

DocumentTexts::DocumentTexts(const LanguageDocument& document)
    : m_Tree(document.tree())
{
    if (document.contentNode() != JsonTree::none)
        walkContainer(document.contentNode(), QString());
}

bool DocumentTexts::isBroken(const QString& url) const
{
    return m_BrokenTexts.contains(url) ||
           std::any_of(m_BrokenNodes.begin(), m_BrokenNodes.end(), [&](const QString& node) {
               return url.startsWith(node) &&
                      (url.size() == node.size() || url.at(node.size()) == QLatin1Char('/'));
           });
}

/** @param prefix what stands before a key in a URL. */
void DocumentTexts::walkContainer(int container, const QString& prefix)
{
    for (int member = m_Tree.firstChild(container); member != JsonTree::none;
         member = m_Tree.at(member).nextSibling) {
        const QString url = prefix + m_Tree.keyOf(member);
        if (m_Tree.isObject(member))
            walkMember(member, url);
        else if (!m_Tree.at(member).isReplaced)
            m_BrokenNodes.append(url);
    }
}

void DocumentTexts::walkNode(int node, const QString& url)
{
    const int text = m_Tree.child(node, textKey());
    const int comment = m_Tree.child(node, commentKey());
    if (m_Tree.isString(text))
        m_Entries.push_back({url, text, m_Tree.isString(comment) ? comment : JsonTree::none,
                             comment != JsonTree::none && !m_Tree.isString(comment)});
    else if (text != JsonTree::none)
        m_BrokenTexts.append(url);

    const int childs = m_Tree.child(node, childsKey());
    walkOthers(node, url, childs != JsonTree::none);
    if (m_Tree.isObject(childs))
        walkContainer(childs, url + QLatin1Char('/'));
    else if (childs != JsonTree::none)
        m_BrokenNodes.append(url);
}

/** What stands in a node itself: nodes where there is no "childs", and else in nobody's reach. */
void DocumentTexts::walkOthers(int node, const QString& url, bool hasChilds)
{
    for (int member = m_Tree.firstChild(node); member != JsonTree::none;
         member = m_Tree.at(member).nextSibling) {
        if (!m_Tree.isObject(member) || isOfNode(member))
            continue;
        const QString memberUrl = url + QLatin1Char('/') + m_Tree.keyOf(member);
        if (!hasChilds)
            walkMember(member, memberUrl);
        else if (!m_Tree.at(member).isReplaced)
            m_Unreachable.push_back(
                {member, memberUrl,
                 QStringLiteral("No look-up finds it beside a \"childs\". Move it into that.")});
    }
}

void DocumentTexts::walkMember(int member, const QString& url)
{
    if (m_Tree.at(member).isReplaced)
        return;
    const QString fault = findFaultOf(m_Tree.keyOf(member));
    if (fault.isEmpty())
        walkNode(member, url);
    else
        m_Unreachable.push_back({member, url, fault});
}

/** Whether the member is what the format knows of a node, and no node below it. */
bool DocumentTexts::isOfNode(int member) const
{
    return m_Tree.hasKey(member, textKey()) || m_Tree.hasKey(member, commentKey()) ||
           m_Tree.hasKey(member, childsKey());
}

Place placeInString(const JsonTree& tree, int node, int offset)
{
    const QByteArray& bytes = tree.bytes();
    int at = tree.at(node).valueBegin;
    const int begin = at++; // behind the quotation mark
    for (int passed = 0; passed < offset && at < tree.at(node).valueEnd - 1;) {
        const int size = bytesOfCharacter(bytes, at);
        passed += bytes.at(at) != '\\' && size == 4 ? 2 : 1; // UTF-16 takes two for such a one
        at += size;
    }
    return tree.placeOf(offset == 0 ? begin : at);
}
