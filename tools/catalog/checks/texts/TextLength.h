#pragma once

#include <QString>

#include <optional>

/** Length in characters as a reader counts them: a letter with its marks, or an emoji, is one. */
int lengthOf(const QString& text);

/** Whether lengthOf() is above @p longest, which needs no counting for most texts. */
bool isLongerThan(const QString& text, int longest);

/** The length that a comment for translators allows: 12 for "Button. At most 12 characters." */
std::optional<int> allowedLength(const QString& comment);
