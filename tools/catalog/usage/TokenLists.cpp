#include "TokenLists.h"

#include <algorithm>

int bracketDepth(const SourceToken& token)
{
    if (token.isSign("(") || token.isSign("[") || token.isSign("{"))
        return 1;
    return token.isSign(")") || token.isSign("]") || token.isSign("}") ? -1 : 0;
}

SourceTokens::size_type endOfBracket(const SourceTokens& tokens, SourceTokens::size_type open)
{
    int depth = 0;
    for (auto i = open; i < tokens.size(); ++i) {
        depth += bracketDepth(tokens.at(i));
        if (depth == 0)
            return i + 1;
    }
    return tokens.size();
}

SourceTokens insideOfBracket(const SourceTokens& tokens, SourceTokens::size_type open)
{
    const auto end = endOfBracket(tokens, open);
    return tokens.mid(open + 1, std::max<SourceTokens::size_type>(end - open - 2, 0));
}

QVector<SourceTokens> split(const SourceTokens& tokens, const char* sign)
{
    QVector<SourceTokens> parts(1);
    int depth = 0;
    for (const SourceToken& token : tokens) {
        depth += bracketDepth(token);
        if (depth == 0 && token.isSign(sign))
            parts.append(SourceTokens());
        else
            parts.last().append(token);
    }
    return parts;
}

QVector<SourceTokens> argumentsOf(const SourceTokens& tokens, SourceTokens::size_type open)
{
    return split(insideOfBracket(tokens, open), ",");
}
