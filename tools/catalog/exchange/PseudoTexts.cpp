#include "PseudoTexts.h"

#include "MarkupTags.h"
#include "Placeholders.h"
#include "TextLength.h"

#include <QBitArray>
#include <QRegularExpression>
#include <QVector>

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

/** What the innermost braces of a message hold. */
enum class Part {
    Text,
    Choice, ///< a plural or a select: words of its own, and texts in braces
    Format  ///< any other argument
};

Part partAt(const QString& message, int brace)
{
    static const QRegularExpression choice(
        QStringLiteral("\\G\\{[^{},]*,\\s*(?:plural|select|selectordinal)\\b"));
    return choice.match(message, brace).hasMatch() ? Part::Choice : Part::Format;
}

bool isQuoteAt(const QString& message, int apostrophe, const QVector<Part>& open)
{
    const QChar next = apostrophe + 1 < message.size() ? message.at(apostrophe + 1) : QChar();
    return open.last() == Part::Format ||
           (open.last() == Part::Text &&
            (next == QLatin1Char('{') || next == QLatin1Char('}') ||
             (next == QLatin1Char('#') && open.size() > 1))); // the number of a plural
}

/** Which characters of a message are of its texts. */
QBitArray findTexts(const QString& message)
{
    QBitArray texts(message.size());
    QVector<Part> open = {Part::Text};
    bool isQuoted = false;
    for (int at = 0; at < message.size(); ++at) {
        const bool isText = open.last() == Part::Text;
        texts.setBit(at, isText);
        const QStringView rest = QStringView(message).mid(at);
        if (rest.startsWith(QLatin1String("''")))
            ++at; // an apostrophe, quoted or not
        else if (rest.startsWith(QLatin1Char('\'')))
            isQuoted = !isQuoted && isQuoteAt(message, at, open);
        else if (!isQuoted && rest.startsWith(QLatin1Char('{')))
            open.append(isText                        ? partAt(message, at)
                        : open.last() == Part::Choice ? Part::Text
                                                      : Part::Format);
        else if (!isQuoted && rest.startsWith(QLatin1Char('}')) && open.size() > 1)
            open.removeLast();
    }
    return texts;
}

/** Which characters are shown as they are: not those of placeholders, markup and messages. */
QBitArray findShown(const QString& text)
{
    const Placeholders placeholders(text);
    const MarkupTags tags(text);
    QBitArray shown = placeholders.areOfMessage() ? findTexts(text) : QBitArray(text.size(), true);
    for (int index = 0; index < text.size(); ++index) {
        if (placeholders.covers(index) || tags.covers(index))
            shown.clearBit(index);
    }
    return shown;
}

} // namespace

QString accentuate(const QString& text)
{
    if (text.isEmpty())
        return text;
    const QBitArray shown = findShown(text);
    QString accented = text;
    for (int index = 0; index < text.size(); ++index) {
        if (shown.testBit(index))
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
    const QBitArray shown = findShown(text);
    QString turned = begin;
    for (int index = 0; index < text.size(); ++index) {
        const bool isEndOfLine = text.at(index) == QLatin1Char('\n') && shown.testBit(index);
        turned += isEndOfLine ? end + QLatin1Char('\n') + begin : QString(text.at(index));
    }
    return turned + end;
}
