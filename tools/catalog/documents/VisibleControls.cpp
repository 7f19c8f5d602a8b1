#include "VisibleControls.h"

#include <algorithm>

namespace
{

constexpr ushort firstPicture = 0x2400;
constexpr ushort pictureOfDelete = 0x2421;
constexpr QChar pictureOfEscape(0x241B);

bool isPicture(QChar character)
{
    return character.unicode() >= firstPicture && character.unicode() <= pictureOfDelete;
}

/** Whether its picture stands for it; that of the escape character begins codes. */
bool hasPicture(QChar character)
{
    const ushort code = character.unicode();
    return (code < 0x20 && code != 0x1B) || code == 0x7F;
}

QChar pictureOf(QChar character)
{
    return character.unicode() == 0x7F ? QChar(pictureOfDelete)
                                       : QChar(firstPicture + character.unicode());
}

/** What a picture stands for; the one of the blank and the empty one stand for themselves. */
QChar shownBy(QChar picture)
{
    if (picture.unicode() == pictureOfDelete)
        return QChar(0x7F);
    return picture.unicode() < firstPicture + 0x20 ? QChar(picture.unicode() - firstPicture)
                                                   : picture;
}

bool isHalf(const QString& text, QString::size_type index)
{
    const QChar character = text.at(index);
    if (character.isHighSurrogate())
        return index + 1 == text.size() || !text.at(index + 1).isLowSurrogate();
    return character.isLowSurrogate() && (index == 0 || !text.at(index - 1).isHighSurrogate());
}

bool isKept(const QString& text, QString::size_type index)
{
    const QChar character = text.at(index);
    const ushort code = character.unicode();
    if (code >= 0x20 && code < 0x7F)
        return true;
    if (code < 0xA0)
        return character == QLatin1Char('\t') || character == QLatin1Char('\n');
    return !isPicture(character) && code != 0xFFFE && code != 0xFFFF && !isHalf(text, index);
}

QString shownAt(const QString& text, QString::size_type index)
{
    const QChar character = text.at(index);
    if (hasPicture(character))
        return pictureOf(character);
    return isPicture(character) ? QString(pictureOfEscape) + character : codeOf(character);
}

/** Reads the code in braces that starts at @p index, and goes behind it; a null character, and no
 * step, when there is none. */
QChar readCode(const QString& shown, QString::size_type& index)
{
    constexpr int mostDigits = 4;
    const auto end = shown.indexOf(QLatin1Char('}'), index);
    if (shown.at(index) != QLatin1Char('{') || end < 0 || end - index - 1 > mostDigits)
        return QChar();
    bool isCode = false;
    const ushort code = shown.mid(index + 1, end - index - 1).toUShort(&isCode, 16);
    index = isCode ? end + 1 : index;
    return QChar(isCode ? code : ushort(0));
}

} // namespace

QString codeOf(QChar character)
{
    return pictureOfEscape +
           QStringLiteral("{%1}").arg(QString::number(character.unicode(), 16).toUpper());
}

QString showControls(const QString& text)
{
    QString::size_type index = 0;
    while (index < text.size() && isKept(text, index))
        ++index;
    if (index == text.size())
        return text;
    QString shown = text.left(index);
    for (; index < text.size(); ++index) {
        if (isKept(text, index))
            shown += text.at(index);
        else
            shown += shownAt(text, index);
    }
    return shown;
}

QString showControlsAndEdges(const QString& text)
{
    QString shown = showControls(text);
    const QLatin1Char lineFeed('\n');
    if (shown.startsWith(lineFeed))
        shown[0] = pictureOf(lineFeed);
    if (shown.endsWith(lineFeed))
        shown[shown.size() - 1] = pictureOf(lineFeed);
    return shown;
}

QString hideControls(const QString& shown)
{
    if (std::none_of(shown.begin(), shown.end(), isPicture))
        return shown;
    QString text;
    for (QString::size_type index = 0; index < shown.size();) {
        const QChar character = shown.at(index++);
        if (character != pictureOfEscape || index == shown.size()) {
            text += isPicture(character) ? shownBy(character) : character;
            continue;
        }
        const QString::size_type before = index;
        const QChar code = readCode(shown, index);
        if (index > before)
            text += code;
        else if (isPicture(shown.at(index)))
            text += shown.at(index++);
        else
            text += shownBy(character);
    }
    return text;
}
