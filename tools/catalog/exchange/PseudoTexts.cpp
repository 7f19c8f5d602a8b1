#include "PseudoTexts.h"

#include "MarkupTags.h"
#include "Placeholders.h"
#include "TextLength.h"

#include <utf8proc.h>

#include <algorithm>

namespace
{

QChar withAccent(QChar letter)
{
    static const QString plain = QStringLiteral("ACDEGHIJKLNORSTUWYZacdeghijklnorstuwyz");
    static const QString accented = QStringLiteral("ÅÇĐÉĜĤÎĴĶĻÑÖŔŠŢÛŴÝŽåçđéĝĥîĵķļñöŕšţûŵýž");
    const auto index = plain.indexOf(letter);
    return index < 0 ? letter : accented.at(index);
}

/** Words of @p length characters in all. */
QString makePadding(int length)
{
    static const QString words = QStringLiteral(" ļöŕém îpšûm đöļöŕ šîţ åméţ");
    return words.repeated(length / words.size() + 1).left(length);
}

} // namespace

QString accentuate(const QString& text)
{
    if (text.isEmpty())
        return text;
    const Placeholders placeholders(text);
    const MarkupTags tags(text);
    QString accented = text;
    for (int index = 0; index < text.size(); ++index) {
        if (!placeholders.covers(index) && !tags.covers(index))
            accented[index] = withAccent(text.at(index));
    }
    constexpr int brackets = 2;
    const int longer = (lengthOf(text) * 2 + 4) / 5;
    return QLatin1Char('[') + accented + makePadding(std::max(0, longer - brackets)) +
           QLatin1Char(']');
}

int widthOf(const QString& text)
{
    int widest = 0;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        int width = 0;
        for (const uint character : line.toUcs4())
            width += utf8proc_charwidth(static_cast<utf8proc_int32_t>(character));
        widest = std::max(widest, width);
    }
    return widest;
}

QString turnRightToLeft(const QString& text)
{
    if (text.isEmpty())
        return text;
    // The override ends with its line, and does not itself tell the direction of the line.
    const QChar mark(0x200F);
    const QString begin = QString(mark) + QChar(0x202E);
    const QString end = QString(QChar(0x202C)) + mark;
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines)
        line = begin + line + end;
    return lines.join(QLatin1Char('\n'));
}
