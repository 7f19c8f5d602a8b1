#include "InvisibleCharacters.h"

#include <QVector>

#include <algorithm>

namespace
{

/** The whole characters of a text, with an end mark before and behind them. */
QVector<uint> withEnds(const QString& text)
{
    return QVector<uint>{0} + text.toUcs4() + QVector<uint>{0};
}

bool isJoiner(uint character)
{
    return character == 0x200C || character == 0x200D;
}

bool isDirection(uint character)
{
    return character == 0x061C || character == 0x200E || character == 0x200F ||
           (character >= 0x202A && character <= 0x202E) ||
           (character >= 0x2066 && character <= 0x2069);
}

bool isControl(uint character)
{
    return (character < 0x20 && character != '\n' && character != '\r' && character != '\t') ||
           (character >= 0x7F && character < 0xA0);
}

/** Whether letters of the script are joined, so that a joiner changes what a reader sees. */
bool isJoining(uint character)
{
    switch (QChar::script(character)) {
    case QChar::Script_Unknown:
    case QChar::Script_Inherited:
    case QChar::Script_Latin:
    case QChar::Script_Greek:
    case QChar::Script_Cyrillic:
    case QChar::Script_Armenian:
    case QChar::Script_Hebrew:
    case QChar::Script_Georgian:
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Hangul:
        return false;
    case QChar::Script_Common: // emoji, and what follows them
        return QChar::category(character) == QChar::Symbol_Other || character == 0x2640 ||
               character == 0x2642;
    default:
        return true;
    }
}

/** Emoji are joined behind the mark that makes them coloured, or the tone of a skin, too. */
bool isJoinable(uint character)
{
    return isJoining(character) || character == 0xFE0F ||
           (character >= 0x1F3FB && character <= 0x1F3FF);
}

/** Whether lines may break within what is written without blanks. */
bool isOfScriptWithoutBlanks(uint character)
{
    const QChar::Script script = QChar::script(character);
    return script == QChar::Script_Khmer || script == QChar::Script_Thai ||
           script == QChar::Script_Lao || script == QChar::Script_Myanmar;
}

bool isFromRightToLeft(uint character)
{
    const QChar::Direction direction = QChar::direction(character);
    return direction == QChar::DirR || direction == QChar::DirAL;
}

bool isWrong(const QVector<uint>& text, QString::size_type at)
{
    const uint character = text.at(at);
    if (isJoiner(character))
        return !isJoinable(text.at(at - 1)) && !isJoinable(text.at(at + 1));
    if (character == 0x200B)
        return std::none_of(text.begin(), text.end(), isOfScriptWithoutBlanks);
    if (isDirection(character))
        return std::none_of(text.begin(), text.end(), isFromRightToLeft);
    if (character == 0x00AD)
        return !QChar::isLetter(text.at(at - 1)) || !QChar::isLetter(text.at(at + 1));
    return character == 0x2060 || character == 0xFEFF || isControl(character) ||
           (character >= 0xFFF9 && character <= 0xFFFB);
}

/** Most texts have none of the characters in question. */
bool mayBeInvisible(QChar character)
{
    const ushort code = character.unicode();
    return code < 0x20 || (code >= 0x7F && code <= 0xAD) || code == 0x061C ||
           (code >= 0x200B && code <= 0x206F) || code >= 0xFEFF;
}

} // namespace

QString::size_type findWrongInvisibleCharacter(const QString& text)
{
    if (std::none_of(text.begin(), text.end(), mayBeInvisible))
        return -1;
    const QVector<uint> characters = withEnds(text);
    QString::size_type offset = 0;
    for (QString::size_type at = 1; at < characters.size() - 1; ++at) {
        if (isWrong(characters, at))
            return offset;
        offset += QChar::requiresSurrogates(characters.at(at)) ? 2 : 1;
    }
    return -1;
}
