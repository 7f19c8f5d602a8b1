#include "TextUses.h"

#include "TokenLists.h"
#include "UrlExpressions.h"

#include <algorithm>

namespace
{

using Kind = SourceToken::Kind;
using Tokens = SourceTokens;

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
        , m_Expressions(language, names)
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
        append(arguments.at(*position), at(i).place);
        if (arguments.size() == 1)
            dropLanguages(firstNewUse);
    }

    void append(const Tokens& expression, const Place& place)
    {
        m_Found.uses += m_Expressions.usesOf(expression, place);
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
        else if (at(i).isIdentifier("Texts") && at(i + 1).isSign(".") &&
                 at(i + 2).isIdentifier("text") && at(i + 3).isSign("("))
            append(argumentsOf(m_Tokens, i + 3).constFirst(), at(i + 2).place);
        else if (at(i).isIdentifier("url") && at(i + 1).isSign(":") && !m_Types.isEmpty() &&
                 m_Types.last() == QLatin1String("DeviceText"))
            append(bindingAt(i + 2), at(i).place);
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
            if (depth == 0 &&
                (token.isSign(";") || bracketDepth(token) < 0 || (isNewLine && !goesOn)))
                break;
            depth += bracketDepth(token);
        }
        return m_Tokens.mid(start, end - start);
    }

    bool continuesChain(int i) const
    {
        return at(i - 1).kind == Kind::Sign && at(i - 1).text == m_Expressions.chainSign();
    }

    void readConstant(int i)
    {
        const QString url = m_Expressions.urlOfConstant(m_Expressions.chainAt(m_Tokens, i));
        if (!url.isEmpty())
            m_Found.uses.append({TextUse::Kind::Whole, url, at(i).place});
    }

    const Tokens& m_Tokens;
    const SourceLanguage m_Language;
    const UrlNames& m_Names;
    const UrlExpressions m_Expressions;
    QStringList m_Types; ///< of the QML objects around what is read
    SourceUses m_Found;
};

} // namespace

SourceUses findTextUses(const QString& source, SourceLanguage language, const UrlNames& names)
{
    const Tokens tokens = tokensOf(source, language);
    return Finder(tokens, language, names).run();
}
