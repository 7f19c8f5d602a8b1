#include "AnswerMemory_p.h"

namespace
{

constexpr int mostOthers = 8192;
constexpr int longestUrl = 256;

/**
 * A copy that shares nothing: what a caller's string stands in may be larger than the string, or
 * end before it is asked for again.
 */
QString ownCopy(const QString& text)
{
    return QString(text.constData(), text.size());
}

} // namespace

void AnswerMemory::remember(const QString& languageKey, const QString& textUrl,
                            const Answer& answer, bool isLanguageLoaded)
{
    if (isLanguageLoaded && !answer.text.isEmpty()) {
        m_Texts[ownCopy(languageKey)].insert(textUrl, answer);
        return;
    }
    if (textUrl.size() > longestUrl || languageKey.size() > longestUrl)
        return;
    if (m_Others.size() >= mostOthers)
        m_Others.clear();
    m_Others.insert({ownCopy(languageKey), ownCopy(textUrl)}, answer);
}

void AnswerMemory::clear()
{
    m_RecentLanguages.fill({});
    m_Texts.clear();
    m_Others.clear();
}

const AnswerTable* AnswerMemory::findTextsAnew(const QString& languageKey)
{
    const auto texts = m_Texts.find(languageKey);
    if (texts == m_Texts.end())
        return nullptr;
    const auto& [key, table] = *texts;
    // Shared, it is known again without being compared. Borrowed characters have no capacity.
    const bool isSafeToShare = languageKey.capacity() > 0 && languageKey.capacity() <= longestUrl;
    recentSlot(languageKey) = {isSafeToShare ? languageKey : key, &table};
    return &table;
}

const Answer* AnswerMemory::findOther(const QString& languageKey, const QString& textUrl) const
{
    const auto other = m_Others.constFind({languageKey, textUrl});
    return other == m_Others.constEnd() ? nullptr : &other.value();
}
