#pragma once

#include <QString>

// What the writer and the reader of XLIFF have to agree on.

namespace XliffNames
{

/** The type of the group that holds the short texts. */
inline QString typeOfShortTexts()
{
    return QStringLiteral("x-short-texts");
}

/** What follows a URL in the id of its short text; a URL's own "#" is percent-encoded there. */
inline QString shortMark()
{
    return QStringLiteral("#short");
}

} // namespace XliffNames
