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
        textsOf(languageKey).insert(ownCopy(textUrl), answer);
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

AnswerMemory::AnswersByUrl& AnswerMemory::textsOf(const QString& languageKey)
{
    auto texts = m_Texts.find(languageKey);
    if (texts == m_Texts.end()) {
        m_RecentLanguages.fill({}); // a new language may move the texts of the others
        texts = m_Texts.insert(ownCopy(languageKey), AnswersByUrl());
    }
    return texts.value();
}

const AnswerMemory::AnswersByUrl* AnswerMemory::findTextsAnew(const QString& languageKey)
{
    const auto texts = m_Texts.constFind(languageKey);
    if (texts == m_Texts.constEnd())
        return nullptr;
    // Shared, it is known again without being compared. Borrowed characters have no capacity.
    const bool isSafeToShare = languageKey.capacity() > 0 && languageKey.capacity() <= longestUrl;
    recentSlot(languageKey) = {isSafeToShare ? languageKey : texts.key(), &texts.value()};
    return &texts.value();
}

const Answer* AnswerMemory::findOther(const QString& languageKey, const QString& textUrl) const
{
    const auto other = m_Others.constFind({languageKey, textUrl});
    return other == m_Others.constEnd() ? nullptr : &other.value();
}
