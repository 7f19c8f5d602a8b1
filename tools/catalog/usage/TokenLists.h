#pragma once

#include "SourceTokens.h"

#include <QVector>

using SourceTokens = QVector<SourceToken>;

/** How much deeper in brackets what follows a token is: 1, 0 or -1. */
int bracketDepth(const SourceToken& token);

/** The index behind the bracket that closes the one at @p open. */
SourceTokens::size_type endOfBracket(const SourceTokens& tokens, SourceTokens::size_type open);

/** What stands between the bracket at @p open and the one that closes it. */
SourceTokens insideOfBracket(const SourceTokens& tokens, SourceTokens::size_type open);

/** The tokens split at a sign outside of brackets. */
QVector<SourceTokens> split(const SourceTokens& tokens, const char* sign);

/** The arguments of the call whose "(" is at @p open. */
QVector<SourceTokens> argumentsOf(const SourceTokens& tokens, SourceTokens::size_type open);
