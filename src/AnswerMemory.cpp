#include "AnswerMemory_p.h"

#include "TextHash_p.h"

namespace
{

constexpr int mostMissing = 8192;
constexpr int mostCharacters = 512; // of one of them: language key and URL

/**
 * A copy that shares nothing: what a caller's string stands in may be larger than the string, or
 * end before it is asked for again.
 */
QString ownCopy(const QString& text)
{
    return QString(text.constData(), text.size());
}

} // namespace

void AnswerMemory::remember(const LookUpDocuments& documents, const QString& textUrl,
                            const LookUpAnswer& answer)
{
    if (!documents.isLanguageKnown())
        return;
    Language& language = m_Languages[ownCopy(documents.languageKey())];
    if (!language.isReadFrom(documents, LookUpStep::SecondFallback)) {
        language.beginAnew(documents);
        m_Missing.clear();
    }
    if (answer.text.isEmpty())
        rememberMissing(documents.languageKey(), textUrl, answer);
    else
        language.answers.insert(textUrl, answer);
}

void AnswerMemory::clear()
{
    m_RecentLanguages.fill({});
    m_Languages.clear();
    m_Missing.clear();
}

void AnswerMemory::Language::beginAnew(const LookUpDocuments& documents)
{
    answers = AnswerTable();
    for (auto i = indexOf(documents.firstStep()); i < sources.size(); ++i) {
        const QJsonObject* const document = documents.at(static_cast<LookUpStep>(i));
        sources[i] = document == nullptr ? QJsonObject() : *document;
    }
}

const AnswerMemory::Language* AnswerMemory::findLanguageAnew(const QString& key)
{
    const auto found = m_Languages.find(key);
    if (found == m_Languages.end())
        return nullptr;
    const auto& [ownKey, language] = *found;
    recentSlot(key) = {ownKey, &language};
    return &language;
}

AnswerMemory::HashValue qHash(const AnswerMemory::Question& question, AnswerMemory::HashValue seed)
{
    static const TextHash hash;
    return static_cast<AnswerMemory::HashValue>(hash(question.languageKey, question.textUrl)) ^
           seed;
}

const LookUpAnswer* AnswerMemory::findMissing(const QString& languageKey,
                                              const QString& textUrl) const
{
    const auto missing = m_Missing.constFind({languageKey, textUrl});
    return missing == m_Missing.constEnd() ? nullptr : &missing.value();
}

void AnswerMemory::rememberMissing(const QString& languageKey, const QString& textUrl,
                                   const LookUpAnswer& answer)
{
    if (languageKey.size() + textUrl.size() > mostCharacters)
        return;
    if (m_Missing.size() >= mostMissing)
        m_Missing.clear();
    m_Missing.insert({ownCopy(languageKey), ownCopy(textUrl)}, answer);
}
