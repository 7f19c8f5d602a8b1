#include "TextUses.h"

#include <algorithm>

namespace
{

using Kind = SourceToken::Kind;
using Tokens = QVector<SourceToken>;

/** Where the URL stands among the arguments of a look-up. */
const QHash<QString, int>& lookUps()
{
    static const QHash<QString, int> positions = {
        {QStringLiteral("getText"), 0},
        {QStringLiteral("getShortText"), 0},
        {QStringLiteral("getComment"), 0},
        {QStringLiteral("getAnsweringLanguage"), 0},
        {QStringLiteral("getMessage"), 0},
        {QStringLiteral("getAllTextsAsVariantMap"), 1},
        {QStringLiteral("getAllTextsAsJsonString"), 1},
    };
    return positions;
}

bool isIdentifier(const SourceToken& token, const char* name)
{
    return token.kind == Kind::Identifier && token.text == QLatin1String(name);
}

bool opens(const SourceToken& token)
{
    return token.isSign("(") || token.isSign("[") || token.isSign("{");
}

bool closes(const SourceToken& token)
{
    return token.isSign(")") || token.isSign("]") || token.isSign("}");
}

/** The index behind the bracket that closes the one at @p open. */
Tokens::size_type endOfBracket(const Tokens& tokens, Tokens::size_type open)
{
    int depth = 0;
    for (auto i = open; i < tokens.size(); ++i) {
        depth += opens(tokens.at(i)) ? 1 : closes(tokens.at(i)) ? -1 : 0;
        if (depth == 0)
            return i + 1;
    }
    return tokens.size();
}

/** The tokens split at a sign outside of brackets. */
QVector<Tokens> split(const Tokens& tokens, const char* sign)
{
    QVector<Tokens> parts(1);
    int depth = 0;
    for (const SourceToken& token : tokens) {
        depth += opens(token) ? 1 : closes(token) ? -1 : 0;
        if (depth == 0 && token.isSign(sign))
            parts.append(Tokens());
        else
            parts.last().append(token);
    }
    return parts;
}

/** The arguments of the call whose "(" is at @p open. */
QVector<Tokens> argumentsOf(const Tokens& tokens, Tokens::size_type open)
{
    const auto end = endOfBracket(tokens, open);
    return split(tokens.mid(open + 1, std::max<Tokens::size_type>(end - open - 2, 0)), ",");
}

/** Whether this is a parameter that a function is declared with. */
bool isParameter(const Tokens& tokens)
{
    for (int i = 0; i + 1 < tokens.size(); ++i) {
        const bool isType = tokens.at(i).kind == Kind::Identifier;
        const SourceToken& next = tokens.at(i + 1);
        if (isType &&
            (next.kind == Kind::Identifier || (next.isSign("&") && i + 2 >= tokens.size())))
            return true;
    }
    return tokens.isEmpty();
}

class Finder
{
public:
    Finder(const Tokens& tokens, SourceLanguage language, const UrlNames& names)
        : m_Tokens(tokens)
        , m_Language(language)
        , m_Names(names)
    {
    }

    SourceUses run()
    {
        for (int i = 0; i < m_Tokens.size(); ++i) {
            const SourceToken& token = m_Tokens.at(i);
            if (token.kind == Kind::String)
                m_Found.literals.insert(token.text);
            if (m_Language == SourceLanguage::Json)
                readMember(i);
            else
                readCode(i);
        }
        return m_Found;
    }

private:
    const SourceToken& at(int index) const
    {
        static const SourceToken none;
        return index >= 0 && index < m_Tokens.size() ? m_Tokens.at(index) : none;
    }

    void readMember(int i)
    {
        const bool isTextId = at(i).kind == Kind::String && at(i + 1).isSign(":") &&
                              at(i + 2).kind == Kind::String &&
                              m_Names.textIdKeys.contains(at(i).text);
        if (isTextId && !at(i + 2).text.isEmpty())
            m_Found.uses.append({TextUse::Kind::Whole, at(i + 2).text, at(i + 2).place});
    }

    void readCode(int i)
    {
        if (at(i).kind == Kind::Identifier && !continuesChain(i))
            readConstant(i);
        if (m_Language == SourceLanguage::Cpp)
            readCall(i);
        else
            readQml(i);
    }

    void readCall(int i)
    {
        if (at(i).kind != Kind::Identifier || !at(i + 1).isSign("("))
            return;
        const auto position = lookUps().constFind(at(i).text);
        const bool isStatic = at(i - 1).isSign("::");
        if (position == lookUps().constEnd() || isStatic != (*position > 0))
            return;
        const QVector<Tokens> arguments = argumentsOf(m_Tokens, i + 1);
        if (arguments.size() <= *position || isParameter(arguments.at(*position)))
            return;
        const auto firstNewUse = m_Found.uses.size();
        evaluate(arguments.at(*position), at(i).place);
        if (arguments.size() == 1)
            dropLanguages(firstNewUse);
    }

    /** A translateable text is asked for a language where others are asked for a URL. */
    void dropLanguages(Tokens::size_type firstNewUse)
    {
        const auto isLanguage = [this](const TextUse& use) {
            return m_Names.languages.contains(use.url) || use.kind == TextUse::Kind::Unknown;
        };
        auto& uses = m_Found.uses;
        uses.erase(std::remove_if(uses.begin() + firstNewUse, uses.end(), isLanguage), uses.end());
    }

    void readQml(int i)
    {
        if (at(i).isSign("{"))
            m_Types.append(at(i - 1).kind == Kind::Identifier ? at(i - 1).text : QString());
        else if (at(i).isSign("}") && !m_Types.isEmpty())
            m_Types.removeLast();
        else if (isIdentifier(at(i), "Texts") && at(i + 1).isSign(".") &&
                 isIdentifier(at(i + 2), "text") && at(i + 3).isSign("("))
            evaluate(argumentsOf(m_Tokens, i + 3).constFirst(), at(i + 2).place);
        else if (isIdentifier(at(i), "url") && at(i + 1).isSign(":") && !m_Types.isEmpty() &&
                 m_Types.last() == QLatin1String("DeviceText"))
            evaluate(bindingAt(i + 2), at(i).place);
    }

    /** What is bound to a property: to the end of the line, or further where it is not over. */
    Tokens bindingAt(int start) const
    {
        int end = start;
        int depth = 0;
        for (; end < m_Tokens.size(); ++end) {
            const SourceToken& token = at(end);
            const bool isNewLine = end > start && token.place.line > at(end - 1).place.line;
            const bool goesOn = token.isSign("+") || token.isSign("?") || token.isSign(":") ||
                                token.isSign(".") || at(end - 1).isSign("+") ||
                                at(end - 1).isSign("?") || at(end - 1).isSign(":");
            if (depth == 0 && (token.isSign(";") || closes(token) || (isNewLine && !goesOn)))
                break;
            depth += opens(token) ? 1 : closes(token) ? -1 : 0;
        }
        return m_Tokens.mid(start, end - start);
    }

    QString chainSign() const
    {
        return m_Language == SourceLanguage::Cpp ? QStringLiteral("::") : QStringLiteral(".");
    }

    bool continuesChain(int i) const
    {
        return at(i - 1).kind == Kind::Sign && at(i - 1).text == chainSign();
    }

    /** The names of a chain such as A::B::C, and how many tokens it takes. */
    QStringList chainAt(const Tokens& tokens, int start) const
    {
        QStringList chain = {tokens.at(start).text};
        int next = start + 1;
        while (next + 1 < tokens.size() && tokens.at(next).kind == Kind::Sign &&
               tokens.at(next).text == chainSign() &&
               tokens.at(next + 1).kind == Kind::Identifier) {
            chain.append(tokens.at(next + 1).text);
            next += 2;
        }
        return chain;
    }

    /** The URL of a generated constant, whatever it is nested in; empty when it is none. */
    QString urlOfConstant(const QStringList& chain) const
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

    void readConstant(int i)
    {
        const QString url = urlOfConstant(chainAt(m_Tokens, i));
        if (!url.isEmpty())
            m_Found.uses.append({TextUse::Kind::Whole, url, at(i).place});
    }

    /** What an expression says of the URL that it gives; each branch of a condition is one. */
    void evaluate(const Tokens& expression, const Place& place)
    {
        const QVector<Tokens> condition = split(expression, "?");
        if (condition.size() > 1) {
            for (int i = 1; i < condition.size(); ++i) {
                for (const Tokens& branch : split(condition.at(i), ":"))
                    evaluate(branch, place);
            }
            return;
        }
        TextUse use = evaluateOperand(expression);
        if (use.place.line == 0)
            use.place = place;
        m_Found.uses.append(use);
    }

    TextUse evaluateOperand(const Tokens& tokens) const
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
                return withRest({TextUse::Kind::Whole, url, tokens.first().place},
                                tokens.mid(length));
        }
        if (tokens.first().isSign("("))
            return evaluateBracket(tokens, 0);
        return {TextUse::Kind::Unknown, QString(), tokens.first().place};
    }

    /** What makes a QString of a literal. */
    static bool isWrapper(const QString& name)
    {
        const QStringList wrappers = {
            QStringLiteral("QStringLiteral"), QStringLiteral("QLatin1String"),
            QStringLiteral("QString"),        QStringLiteral("fromLatin1"),
            QStringLiteral("fromUtf8"),       QStringLiteral("QLatin1StringView")};
        return wrappers.contains(name);
    }

    TextUse evaluateBracket(const Tokens& tokens, Tokens::size_type open) const
    {
        const auto end = endOfBracket(tokens, open);
        return withRest(
            evaluateOperand(tokens.mid(open + 1, std::max<Tokens::size_type>(end - open - 2, 0))),
            tokens.mid(end));
    }

    static TextUse literalUse(const Tokens& tokens)
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

    /** What stands behind a literal is put behind it, or in place of its "%1". */
    static TextUse withRest(TextUse use, const Tokens& rest)
    {
        if (rest.isEmpty() || use.kind == TextUse::Kind::Unknown)
            return use;
        use.kind = TextUse::Kind::Beginning;
        if (rest.size() > 1 && rest.first().isSign(".") && isIdentifier(rest.at(1), "arg"))
            use.url = use.url.section(QLatin1Char('%'), 0, 0);
        return use;
    }

    const Tokens& m_Tokens;
    const SourceLanguage m_Language;
    const UrlNames& m_Names;
    QStringList m_Types; ///< of the QML objects around what is read
    SourceUses m_Found;
};

} // namespace

SourceUses findTextUses(const QString& source, SourceLanguage language, const UrlNames& names)
{
    const Tokens tokens = tokensOf(source, language);
    return Finder(tokens, language, names).run();
}
