#include "TextData.h"

#include "TextKey.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{

bool isDecimalMark(QChar mark)
{
    return mark == QLatin1Char('.') || mark == QLatin1Char(',') || mark == QChar(0x066B);
}

/** Whether the character stands between the digits of one number in some language. */
bool isMark(QChar character)
{
    // Apostrophes, the Arabic marks, and blanks: of no break, thin, narrow.
    static const QString others = QString::fromUtf8("'’٬\u00A0\u2009\u202F ");
    return isDecimalMark(character) || others.contains(character);
}

bool isRaisedOrLowered(QChar character)
{
    return character.category() == QChar::Number_Other;
}

/** The digit that a character is in any script; -1 for any other character. */
int digitOf(QChar character)
{
    if (character.unicode() < 0x80)
        return character >= QLatin1Char('0') && character <= QLatin1Char('9')
                   ? character.unicode() - '0'
                   : -1;
    return character.digitValue();
}

/** The number that one Chinese character is, "二" for one; empty for any other. */
QString ideographicNumber(QChar character)
{
    static const QString numerals = QString::fromUtf8("〇一二三四五六七八九十");
    const QString::size_type number =
        character.unicode() < 0x3000 ? -1 : numerals.indexOf(character);
    return number < 0 ? QString() : QString::number(number);
}

QString withoutLeadingNoughts(QString digits)
{
    while (digits.size() > 1 && digits.startsWith(QLatin1Char('0')))
        digits.remove(0, 1);
    return digits;
}

QString withoutTrailingNoughts(QString digits)
{
    while (digits.endsWith(QLatin1Char('0')))
        digits.chop(1);
    return digits;
}

/** Whether groups of digits are one whole number: 1,000,000, Indian 10,00,000, Chinese 100,0000. */
bool isGrouped(const QStringList& groups, const QString& marks)
{
    if (groups.size() == 1)
        return true;
    if (marks.count(marks.at(0)) != marks.size())
        return false;
    const auto last = groups.last().size();
    for (int group = 1; group < groups.size() - 1; ++group) {
        const auto size = groups.at(group).size();
        if (size != last && !(last == 3 && size == 2))
            return false;
    }
    return (last == 3 || last == 4) && groups.first().size() <= last &&
           !groups.first().startsWith(QLatin1Char('0'));
}

QString endOfOrdinal(const QString& text, QString::size_type offset)
{
    static const QRegularExpression pattern(QStringLiteral("\\G(?:st|nd|rd|th)\\b"));
    return text.size() > offset && text.at(offset).isLetter()
               ? pattern.match(text, offset).captured()
               : QString();
}

} // namespace

/** Reads the digits and marks that follow each other in a text as one number, or as several. */
class TextData::NumberReader
{
public:
    NumberReader(const QString& text, QString::size_type offset)
        : m_StrText(text)
        , m_Begin(offset)
        , m_End(offset)
    {
        readGroup();
        while (m_End + 1 < text.size() && isMark(text.at(m_End)) &&
               digitOf(text.at(m_End + 1)) >= 0 && !isRaisedOrLowered(text.at(m_End + 1))) {
            m_StrMarks.append(text.at(m_End));
            ++m_End;
            readGroup();
        }
    }

    QString::size_type end() const { return m_End; }

    Number read() const
    {
        Number number;
        number.written = m_StrText.mid(m_Begin, m_End - m_Begin);
        number.isPartOfWord = isRaisedOrLowered(m_StrText.at(m_Begin)) ||
                              (m_Begin > 0 && m_StrText.at(m_Begin - 1).isLetter()) ||
                              !endOfOrdinal(m_StrText, m_End).isEmpty();
        if (isGrouped(m_Groups, m_StrMarks))
            number.readings.append(withoutLeadingNoughts(m_Groups.join(QString())));
        if (const QString decimal = readDecimal(); !decimal.isEmpty())
            number.readings.append(decimal);
        // Blanks may as well stand between two numbers, and a dot between those of a time or a day.
        if (number.readings.isEmpty() || m_StrMarks.contains(QLatin1Char(' ')) || isTimeOrDay()) {
            for (const QString& group : m_Groups)
                number.parts.append(withoutLeadingNoughts(group));
        }
        return number;
    }

private:
    void readGroup()
    {
        QString digits;
        for (; m_End < m_StrText.size() && digitOf(m_StrText.at(m_End)) >= 0; ++m_End)
            digits.append(QChar('0' + digitOf(m_StrText.at(m_End))));
        m_Groups.append(digits);
    }

    /** With the last mark as that of decimals; empty when it cannot be. */
    QString readDecimal() const
    {
        if (m_StrMarks.isEmpty() || !isDecimalMark(m_StrMarks.back()) ||
            m_StrMarks.count(m_StrMarks.back()) > 1)
            return QString();
        const QStringList whole = m_Groups.mid(0, m_Groups.size() - 1);
        if (!isGrouped(whole, m_StrMarks.chopped(1)))
            return QString();
        // Three may be thousands as well, and 1,000 is not 1.
        const QString& last = m_Groups.last();
        const QString decimals = last.size() == 3 ? last : withoutTrailingNoughts(last);
        const QString integer = withoutLeadingNoughts(whole.join(QString()));
        return decimals.isEmpty() ? integer : integer + QLatin1Char('.') + decimals;
    }

    /** 9.05, 31.12 */
    bool isTimeOrDay() const
    {
        return m_StrMarks == QLatin1String(".") && m_Groups.first().size() <= 2 &&
               m_Groups.last().size() == 2;
    }

    const QString& m_StrText;
    const QString::size_type m_Begin;
    QString::size_type m_End;
    QStringList m_Groups;
    QString m_StrMarks; ///< between the groups
};

TextData::TextData(const QString& text, const Placeholders& placeholders, const MarkupTags& tags)
{
    findAddresses(text);
    findNumbers(text, placeholders, tags);
}

QStringList TextData::findMissing(const TextData& base) const
{
    QStringList missing;
    for (const Address& address : base.m_Addresses) {
        if (std::none_of(m_Addresses.begin(), m_Addresses.end(),
                         [&](const Address& own) { return own.written == address.written; }))
            missing.append(address.written);
    }
    for (const Number& number : base.m_Numbers) {
        if (!number.isPartOfWord && !hasNumber(number))
            missing.append(number.written);
    }
    removeRepeated(missing);
    return missing;
}

void TextData::findAddresses(const QString& text)
{
    if (!text.contains(QLatin1String("://")) && !text.contains(QLatin1Char('@')) &&
        !text.contains(QLatin1String("www.")))
        return;
    // An address ends before a full stop that ends the sentence.
    static const QRegularExpression pattern(QStringLiteral(
        "(?:(?:https?|ftp|file)://|www\\.)[A-Za-z0-9\\-._~:/?#@!$&*+,;=%]*[A-Za-z0-9\\-_~/#@$&*+=%]"
        "|[A-Za-z0-9._%+-]+@[A-Za-z0-9-]+(?:\\.[A-Za-z0-9-]+)+"));
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        m_Addresses.append({match.captured(), match.capturedStart()});
    }
}

void TextData::findNumbers(const QString& text, const Placeholders& placeholders,
                           const MarkupTags& tags)
{
    for (QString::size_type at = 0; at < text.size(); ++at) {
        const QString ideographic = ideographicNumber(text.at(at));
        if (!ideographic.isEmpty())
            m_Readings.insert(ideographic);
        if (digitOf(text.at(at)) < 0)
            continue;
        const NumberReader reader(text, at);
        if (!placeholders.covers(at) && !tags.covers(at) && !isInAddress(at)) {
            m_Numbers.append(reader.read());
            for (const QString& reading : m_Numbers.last().readings + m_Numbers.last().parts)
                m_Readings.insert(reading);
        }
        at = reader.end() - 1;
    }
}

bool TextData::isInAddress(QString::size_type offset) const
{
    return std::any_of(m_Addresses.begin(), m_Addresses.end(), [=](const Address& address) {
        return offset >= address.offset && offset < address.offset + address.written.size();
    });
}

bool TextData::hasNumber(const Number& number) const
{
    const auto isThere = [this](const QString& reading) { return m_Readings.contains(reading); };
    const QStringList& parts = number.parts;
    return std::any_of(number.readings.begin(), number.readings.end(), isThere) ||
           (!parts.isEmpty() && std::all_of(parts.begin(), parts.end(), isThere));
}
