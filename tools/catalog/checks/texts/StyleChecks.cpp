#include "StyleChecks_p.h"

#include "InvisibleCharacters.h"
#include "TextLength.h"

#include <algorithm>

namespace
{

/** A blank, and no line break. */
bool isBlank(QChar character)
{
    return character.isSpace() && character != QLatin1Char('\n') &&
           character != QLatin1Char('\r') && character != QChar::LineSeparator &&
           character != QChar::ParagraphSeparator;
}

bool hasEdgeSpace(const QString& text, bool atEnd)
{
    return !text.isEmpty() && isBlank(atEnd ? text.back() : text.front());
}

/** The first of two blanks in a line that do not indent it; -1 when there are none. */
QString::size_type findDoubleBlank(const QString& text)
{
    bool isIndent = true;
    for (QString::size_type at = 0; at + 1 < text.size(); ++at) {
        const QChar character = text.at(at);
        if (!character.isSpace())
            isIndent = false;
        else if (!isBlank(character))
            isIndent = true;
        else if (!isIndent && isBlank(text.at(at + 1)))
            return at;
    }
    return -1;
}

bool isWord(QStringView word)
{
    return word.size() > 1 && std::all_of(word.begin(), word.end(),
                                          [](QChar c) { return c.isLetter() || c.isMark(); });
}

QStringView withoutMarks(QStringView word)
{
    while (!word.isEmpty() && word.at(word.size() - 1).isPunct())
        word.chop(1);
    return word;
}

/** The second of two words that are alike with a blank between them; null when there is none. */
QStringView findDoubledWord(const QString& text)
{
    QStringView before;
    for (QString::size_type begin = 0; begin < text.size();) {
        QString::size_type end = begin;
        while (end < text.size() && !text.at(end).isSpace())
            ++end;
        const QStringView word = QStringView(text).mid(begin, end - begin);
        // What ends a sentence may follow the second; between the two it keeps them apart.
        const QStringView bare = withoutMarks(word);
        if (bare.size() == before.size() && bare.compare(before, Qt::CaseInsensitive) == 0 &&
            isWord(bare))
            return bare;
        before = word;
        begin = end + 1;
    }
    return QStringView();
}

/** Whether it is one such as Bora Bora: few words, each with a capital letter. */
bool isName(const QString& text)
{
    const QStringList words = text.split(QLatin1Char(' '));
    return words.size() <= 3 && std::all_of(words.begin(), words.end(), [](const QString& word) {
               return !word.isEmpty() && word.front().isUpper();
           });
}

} // namespace

void findEdgeSpace(const TextToCheck& text, TextFindings& findings)
{
    const QString& own = text.text.text;
    for (const bool atEnd : {false, true}) {
        const bool isThere = hasEdgeSpace(own, atEnd);
        const bool isInBase = text.base != nullptr && hasEdgeSpace(text.base->text, atEnd);
        // What follows a blank in the base follows without one where words need none.
        if (isThere == isInBase || (isInBase && !text.rules.hasBlanks()))
            continue;
        const QString edge = atEnd ? QStringLiteral("ends") : QStringLiteral("begins");
        const QString reason =
            isThere ? QStringLiteral("The text %1 with a blank. Remove it.").arg(edge)
                    : QStringLiteral("The base's text %1 with a blank, this one does not. Add it.")
                          .arg(edge);
        findings.append({QStringLiteral("edge-space"), atEnd ? own.size() - 1 : 0, reason});
        return;
    }
}

void findDoubleSpace(const TextToCheck& text, TextFindings& findings)
{
    const QString::size_type offset = findDoubleBlank(text.text.text);
    if (offset < 0 || (text.base != nullptr && findDoubleBlank(text.base->text) >= 0))
        return;
    findings.append({QStringLiteral("double-space"), offset,
                     QStringLiteral("There are two blanks in a row. Leave one.")});
}

void findInvisibleCharacter(const TextToCheck& text, TextFindings& findings)
{
    const QString::size_type offset = findWrongInvisibleCharacter(text.text.text);
    if (offset < 0)
        return;
    const QChar character = text.text.text.at(offset);
    if (text.base != nullptr && text.base->text.contains(character))
        return;
    findings.append({QStringLiteral("invisible-character"), offset,
                     QStringLiteral("There is a character that nobody sees, U+%1. Remove it.")
                         .arg(static_cast<uint>(character.unicode()), 4, 16, QLatin1Char('0'))});
}

void findRepeatedWord(const TextToCheck& text, TextFindings& findings)
{
    const QStringView word = findDoubledWord(text.text.text);
    if (word.isNull() || text.rules.mayDouble(word.toString()) || isName(text.text.text))
        return;
    if (text.base != nullptr && !findDoubledWord(text.base->text).isNull())
        return;
    findings.append(
        {QStringLiteral("repeated-word"),
         static_cast<QString::size_type>(word.data() - text.text.text.constData()),
         QStringLiteral("The word \"%1\" stands twice in a row. Leave one.").arg(word.toString())});
}

void findTooLongText(const TextToCheck& text, TextFindings& findings)
{
    const auto longest = allowedLength(text.commentOfBase);
    if (!longest || !isLongerThan(text.text.text, *longest))
        return;
    findings.append({QStringLiteral("too-long"), 0,
                     QStringLiteral("The text has %1 characters, and the base's comment allows %2. "
                                    "Shorten it.")
                         .arg(lengthOf(text.text.text))
                         .arg(*longest)});
}
