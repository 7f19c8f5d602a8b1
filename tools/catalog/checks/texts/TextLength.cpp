#include "TextLength.h"

#include <QRegularExpression>
#include <QTextBoundaryFinder>

int lengthOf(const QString& text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    int length = 0;
    while (finder.toNextBoundary() >= 0)
        ++length;
    return length;
}

bool isLongerThan(const QString& text, int longest)
{
    return text.size() > longest && lengthOf(text) > longest;
}

std::optional<int> allowedLength(const QString& comment)
{
    static const QRegularExpression pattern(
        QStringLiteral("\\b(?:at most|up to|(?:no|not) more than|max(?:imum|\\.)?(?: of)?)"
                       " (\\d{1,6}) (?:characters|chars|letters)\\b"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = pattern.match(comment);
    return match.hasMatch() ? std::make_optional(match.captured(1).toInt()) : std::nullopt;
}
