#include "LanguageTexts.h"

#include "LanguageDefinitions.h"

LanguageTexts::LanguageTexts(const QJsonObject& document)
{
    addNodes(QString(), document.value(LanguageDefinitions::getJsonContentName()).toObject());
    m_Indexes.reserve(m_Entries.size());
    for (int index = 0; index < m_Entries.size(); ++index)
        m_Indexes.insert(m_Entries.at(index).url, index);
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
        // No URL leads to a key that holds its separator.
        const QString key = node.key();
        if (node.value().isObject() && !key.contains(LanguageDefinitions::getUrlSeparator()))
            addNode(prefix + key, node.value().toObject());
    }
}

void LanguageTexts::addNode(const QString& url, const QJsonObject& node)
{
    const QJsonValue text = node.value(LanguageDefinitions::getJsonTextName());
    if (text.isString()) {
        const QJsonValue comment = node.value(LanguageDefinitions::getJsonCommentName());
        m_Entries.append({url, text.toString(), comment.toString(), comment.isString()});
    }
    // Where there is a container, look-ups find children in it alone.
    const auto childs = node.find(LanguageDefinitions::getJsonChildsKey());
    addNodes(url + LanguageDefinitions::getUrlSeparator(),
             childs == node.end() ? node : childs.value().toObject());
}
