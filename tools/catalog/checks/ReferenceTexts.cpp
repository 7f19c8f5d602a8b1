#include "ReferenceTexts.h"

#include <QMap>

#include <algorithm>

ReferenceTexts::Entry::Entry(const QString& textUrl, const QString& text,
                             const QString& commentOfText)
    : url(textUrl)
    , analyzed(text)
    , comment(commentOfText)
{
}

void ReferenceTexts::add(const DocumentTexts& texts, bool isOfBase)
{
    m_Entries.reserve(m_Entries.size() + texts.entries().size());
    for (const DocumentTexts::Entry& text : texts.entries()) {
        const int known = find(text.url);
        if (known != none && !at(known).analyzed.text.isEmpty())
            continue;
        Entry entry(text.url, texts.textOf(text), texts.commentOf(text));
        if (known != none) {
            // The base's is empty, and POSIX answers in its place.
            entry.isListed = at(known).isListed;
            m_Entries[static_cast<std::size_t>(known)] = entry;
            m_Entries[static_cast<std::size_t>(known)].isOfBase = false;
            continue;
        }
        entry.isOfBase = isOfBase;
        entry.isListed = isOfBase && text.comment != JsonTree::none;
        m_Indexes.insert(text.url, size());
        m_Entries.push_back(entry);
    }
}

void ReferenceTexts::settle()
{
    QMap<QString, std::vector<int>> indexesByText;
    for (int index = 0; index < size(); ++index) {
        if (at(index).isOfBase && !at(index).analyzed.text.isEmpty())
            indexesByText[at(index).analyzed.text].push_back(index);
    }
    for (const std::vector<int>& indexes : qAsConst(indexesByText)) {
        if (indexes.size() > 1)
            m_SameTexts.push_back(indexes);
    }
}

QString ReferenceTexts::textOf(const QString& url) const
{
    const int index = find(url);
    return index == none ? QString() : at(index).analyzed.text;
}

int ReferenceTexts::listedCount() const
{
    return static_cast<int>(std::count_if(m_Entries.begin(), m_Entries.end(),
                                          [](const Entry& entry) { return entry.isListed; }));
}

QStringList ReferenceTexts::urls() const
{
    QStringList urls;
    for (const Entry& entry : m_Entries)
        urls.append(entry.url);
    return urls;
}
