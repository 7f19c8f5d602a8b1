#include "AnswerMemory_p.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace
{

constexpr int mostOthers = 8192;
constexpr int mostCharacters = 512; // of one of them: language key, URL and text

/**
 * A copy that shares nothing: what a caller's string stands in may be larger than the string, or
 * end before it is asked for again.
 */
QString ownCopy(const QString& text)
{
    return QString(text.constData(), text.size());
}

XXH64_hash_t hashOf(const QString& text, XXH64_hash_t seed)
{
    const std::size_t byteCount = static_cast<std::size_t>(text.size()) * sizeof(QChar);
    return XXH3_64bits_withSeed(text.constData(), byteCount, seed);
}

} // namespace

void AnswerMemory::remember(const QString& languageKey, const QString& textUrl,
                            const Answer& answer, bool isLanguageLoaded)
{
    if (isLanguageLoaded && !answer.text.isEmpty()) {
        m_Texts[ownCopy(languageKey)].insert(textUrl, answer);
        return;
    }
    if (languageKey.size() + textUrl.size() + answer.text.size() > mostCharacters)
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
    recentSlot(languageKey) = {key, &table};
    return &table;
}

uint qHash(const AnswerMemory::Question& question, uint seed)
{
    return static_cast<uint>(hashOf(question.textUrl, hashOf(question.languageKey, seed)));
}

const Answer* AnswerMemory::findOther(const QString& languageKey, const QString& textUrl) const
{
    const auto other = m_Others.constFind({languageKey, textUrl});
    return other == m_Others.constEnd() ? nullptr : &other.value();
}
