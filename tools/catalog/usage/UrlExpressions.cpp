#include "UrlExpressions.h"

namespace
{

using Kind = SourceToken::Kind;

/** What makes a QString of a literal. */
bool isWrapper(const QString& name)
{
    const QStringList wrappers = {
        QStringLiteral("QStringLiteral"), QStringLiteral("QLatin1String"),
        QStringLiteral("QString"),        QStringLiteral("fromLatin1"),
        QStringLiteral("fromUtf8"),       QStringLiteral("QLatin1StringView")};
    return wrappers.contains(name);
}

/** What stands behind a literal is put behind it, or in place of its "%1". */
TextUse withRest(TextUse use, const SourceTokens& rest)
{
    if (rest.isEmpty() || use.kind == TextUse::Kind::Unknown)
        return use;
    use.kind = TextUse::Kind::Beginning;
    if (rest.size() > 1 && rest.first().isSign(".") && rest.at(1).isIdentifier("arg"))
        use.url = use.url.section(QLatin1Char('%'), 0, 0);
    return use;
}

TextUse literalUse(const SourceTokens& tokens)
{
    TextUse use = {TextUse::Kind::Whole, QString::fromLatin1(""), tokens.first().place};
    int next = 0;
    for (; next < tokens.size() && tokens.at(next).kind == Kind::String; ++next) {
        use.url += tokens.at(next).text;
        if (tokens.at(next).isOpen)
            use.kind = TextUse::Kind::Beginning;
    }
    const bool hasSuffix = next < tokens.size() && tokens.at(next).kind == Kind::Identifier;
    return withRest(use, tokens.mid(hasSuffix ? next + 1 : next));
}

} // namespace

UrlExpressions::UrlExpressions(SourceLanguage language, const UrlNames& names)
    : m_Language(language)
    , m_Names(names)
{
}

QString UrlExpressions::chainSign() const
{
    return m_Language == SourceLanguage::Cpp ? QStringLiteral("::") : QStringLiteral(".");
}

QStringList UrlExpressions::chainAt(const SourceTokens& tokens, int start) const
{
    QStringList chain = {tokens.at(start).text};
    int next = start + 1;
    while (next + 1 < tokens.size() && tokens.at(next).kind == Kind::Sign &&
           tokens.at(next).text == chainSign() && tokens.at(next + 1).kind == Kind::Identifier) {
        chain.append(tokens.at(next + 1).text);
        next += 2;
    }
    return chain;
}

QString UrlExpressions::urlOfConstant(const QStringList& chain) const
{
    const auto& constants =
        m_Language == SourceLanguage::Cpp ? m_Names.cppConstants : m_Names.qmlProperties;
    for (int outer = 1; outer < chain.size(); ++outer) {
        const QString url = constants.value(chain.mid(outer).join(chainSign()));
        if (!url.isEmpty())
            return url;
    }
    return QString();
}

QVector<TextUse> UrlExpressions::usesOf(const SourceTokens& expression, const Place& place) const
{
    QVector<TextUse> uses;
    const QVector<SourceTokens> condition = split(expression, "?");
    if (condition.size() > 1) {
        for (int i = 1; i < condition.size(); ++i) {
            for (const SourceTokens& branch : split(condition.at(i), ":"))
                uses += usesOf(branch, place);
        }
        return uses;
    }
    TextUse use = evaluate(expression);
    if (use.place.line == 0)
        use.place = place;
    uses.append(use);
    return uses;
}

TextUse UrlExpressions::evaluate(const SourceTokens& tokens) const
{
    if (tokens.isEmpty())
        return {};
    if (tokens.first().kind == Kind::String)
        return literalUse(tokens);
    if (tokens.first().kind == Kind::Identifier) {
        const QStringList chain = chainAt(tokens, 0);
        const auto length = 2 * chain.size() - 1;
        if (isWrapper(chain.last()) && length < tokens.size() && tokens.at(length).isSign("("))
            return evaluateBracket(tokens, length);
        const QString url = urlOfConstant(chain);
        if (!url.isEmpty())
            return withRest({TextUse::Kind::Whole, url, tokens.first().place}, tokens.mid(length));
    }
    if (tokens.first().isSign("("))
        return evaluateBracket(tokens, 0);
    return {TextUse::Kind::Unknown, QString(), tokens.first().place};
}

TextUse UrlExpressions::evaluateBracket(const SourceTokens& tokens,
                                        SourceTokens::size_type open) const
{
    return withRest(evaluate(insideOfBracket(tokens, open)),
                    tokens.mid(endOfBracket(tokens, open)));
}
