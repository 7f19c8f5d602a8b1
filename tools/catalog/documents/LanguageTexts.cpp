#include "LanguageTexts.h"

#include "NodeKeys.h"

#include "LanguageDefinitions.h"

namespace
{

/** Whether a URL can lead to the key, and not end at a separator in it. */
bool isInUrls(const QString& key)
{
    return !key.contains(LanguageDefinitions::getUrlSeparator());
}

bool hasObjects(const JsonTree& tree, int node)
{
    int member = tree.isObject(node) ? tree.firstChild(node) : JsonTree::none;
    while (member != JsonTree::none && !tree.isObject(member))
        member = tree.at(member).nextSibling;
    return member != JsonTree::none;
}

} // namespace

LanguageTexts::LanguageTexts(const QJsonObject& document)
{
    addNodes(QString(), document.value(LanguageDefinitions::getJsonContentName()).toObject());
    indexEntries();
}

LanguageTexts::LanguageTexts(const JsonTree& tree)
{
    const int content = tree.size() == 0
                            ? JsonTree::none
                            : tree.child(JsonTree::root, LanguageDefinitions::getJsonContentName());
    if (tree.isObject(content))
        addNodes(QString(), tree, content);
    indexEntries();
}

const LanguageTexts::Entry& LanguageTexts::entry(const QString& url) const
{
    static const Entry none;
    const auto index = m_Indexes.find(url);
    return index == m_Indexes.end() ? none : m_Entries.at(*index);
}

void LanguageTexts::addNodes(const QString& prefix, const QJsonObject& nodes)
{
    for (auto node = nodes.begin(); node != nodes.end(); ++node) {
        const QJsonValue value = node.value();
        if (!value.isObject())
            continue;
        const QString key = node.key();
        if (isInUrls(key))
            addNode(prefix + key, value.toObject());
    }
}

void LanguageTexts::addNode(const QString& url, const QJsonObject& node)
{
    const QJsonValue text = node.value(LanguageDefinitions::getJsonTextName());
    if (text.isString()) {
        const QJsonValue comment = node.value(LanguageDefinitions::getJsonCommentName());
        m_Entries.append(
            {url, text.toString(), comment.toString(), comment.isString(), JsonTree::none});
    }
    // Where there is a container, look-ups find children in it alone.
    const auto childs = node.find(LanguageDefinitions::getJsonChildsKey());
    addNodes(url + LanguageDefinitions::getUrlSeparator(),
             childs == node.end() ? node : childs.value().toObject());
}

void LanguageTexts::addNodes(const QString& prefix, const JsonTree& tree, int nodes)
{
    for (int node = tree.firstChild(nodes); node != JsonTree::none;
         node = tree.at(node).nextSibling) {
        if (!tree.isObject(node) || tree.at(node).isReplaced)
            continue;
        const QString key = tree.keyOf(node);
        if (isInUrls(key))
            addNode(prefix + key, tree, node);
    }
}

void LanguageTexts::addNode(const QString& url, const JsonTree& tree, int node)
{
    const int text = tree.child(node, nodeKeys().text);
    if (tree.isString(text)) {
        const int comment = tree.child(node, nodeKeys().comment);
        m_Entries.append(
            {url, tree.stringOf(text), tree.stringOf(comment), tree.isString(comment), text});
    }
    const int childs = tree.child(node, nodeKeys().childs);
    const int nodes = childs == JsonTree::none ? node : childs;
    if (hasObjects(tree, nodes))
        addNodes(url + LanguageDefinitions::getUrlSeparator(), tree, nodes);
}

void LanguageTexts::indexEntries()
{
    m_Indexes.reserve(m_Entries.size());
    for (int index = 0; index < m_Entries.size(); ++index)
        m_Indexes.insert(m_Entries.at(index).url, index);
}
