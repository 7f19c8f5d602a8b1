#include "AnswerMemory_p.h"

namespace
{

constexpr int mostOthers = 8192;
constexpr int longestUrl = 256;

} // namespace

void AnswerMemory::remember(const QString& languageKey, const QString& textUrl,
                            const Answer& answer, bool isLanguageLoaded)
{
    if (isLanguageLoaded && !answer.text.isEmpty()) {
        if (!m_Texts.contains(languageKey))
            m_RecentLanguages.fill({}); // a new language may move the texts of the others
        m_Texts[languageKey].insert(textUrl, answer);
        return;
    }
    if (textUrl.size() > longestUrl || languageKey.size() > longestUrl)
        return;
    if (m_Others.size() >= mostOthers)
        m_Others.clear();
    m_Others.insert({languageKey, textUrl}, answer);
}

void AnswerMemory::clear()
{
    m_RecentLanguages.fill({});
    m_Texts.clear();
    m_Others.clear();
}

const AnswerMemory::AnswersByUrl* AnswerMemory::findTextsAnew(const QString& languageKey)
{
    const auto texts = m_Texts.constFind(languageKey);
    if (texts == m_Texts.constEnd())
        return nullptr;
    recentSlot(languageKey) = {languageKey, &texts.value()};
    return &texts.value();
}

const Answer* AnswerMemory::findOther(const QString& languageKey, const QString& textUrl) const
{
    const auto other = m_Others.constFind({languageKey, textUrl});
    return other == m_Others.constEnd() ? nullptr : &other.value();
}
