#include "LanguageTexts.h"

LanguageTexts::LanguageTexts(const LanguageDocument& document)
{
    const auto& nodes = document.textNodes();
    m_Entries.reserve(static_cast<int>(nodes.size()));
    m_Indexes.reserve(static_cast<int>(nodes.size()));
    for (const LanguageDocument::TextNode& node : nodes) {
        const QString url = document.urlOf(node.node);
        m_Indexes.insert(url, m_Entries.size());
        m_Entries.append({url, document.textOf(node), document.commentOf(node)});
    }
}

const LanguageTexts::Entry& LanguageTexts::entry(const QString& url) const
{
    static const Entry none;
    const auto index = m_Indexes.find(url);
    return index == m_Indexes.end() ? none : m_Entries.at(*index);
}
