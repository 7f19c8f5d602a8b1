#pragma once

#include "TextUses.h"
#include "TokenLists.h"

/** Tells which text URLs an expression gives: of a literal, of a generated constant, or of what
 * begins with one. */
class UrlExpressions
{
public:
    /** @param names must outlive this object. */
    UrlExpressions(SourceLanguage language, const UrlNames& names);

    /** What an expression says of the URL that it gives; each branch of a condition is one. @p
     * place stands for what has none. */
    QVector<TextUse> usesOf(const SourceTokens& expression, const Place& place) const;

    /** What joins the names of a generated constant. */
    QString chainSign() const;
    /** The names of a chain such as A::B::C. */
    QStringList chainAt(const SourceTokens& tokens, int start) const;
    /** The URL of a generated constant, whatever it is nested in; empty when it is none. */
    QString urlOfConstant(const QStringList& chain) const;

private:
    TextUse evaluate(const SourceTokens& tokens) const;
    TextUse evaluateBracket(const SourceTokens& tokens, SourceTokens::size_type open) const;

    const SourceLanguage m_Language;
    const UrlNames& m_Names;
};
