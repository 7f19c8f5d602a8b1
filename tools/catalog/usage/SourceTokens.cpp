#include "SourceTokens.h"

#include <QStringList>

#include <algorithm>

namespace
{

using Kind = SourceToken::Kind;

bool isWordCharacter(QChar character)
{
    return character == QLatin1Char('_') || character == QLatin1Char('$') ||
           character.isLetterOrNumber();
}

/** Whether a "/" behind this token divides; else it begins a regular expression of a script. */
bool isOperand(const SourceToken& token)
{
    return token.kind != Kind::Sign ? token.text != QLatin1String("return")
                                    : token.isSign(")") || token.isSign("]") || token.isSign("}");
}

class Tokenizer
{
public:
    Tokenizer(const QString& source, SourceLanguage language)
        : m_Source(source)
        , m_Language(language)
    {
    }

    QVector<SourceToken> run()
    {
        while (m_Position < m_Source.size())
            step();
        return m_Tokens;
    }

private:
    void step()
    {
        const QChar character = m_Source.at(m_Position);
        if (character.isSpace())
            advance(1);
        else if (isAt("//"))
            skipTo("\n");
        else if (isAt("/*"))
            skipTo("*/");
        else if (character == QLatin1Char('"'))
            readString(character);
        else if (character == QLatin1Char('\'') || character == QLatin1Char('`'))
            readOtherQuotes(character);
        else if (isWordCharacter(character))
            readWord();
        else if (isAt("/") && m_Language == SourceLanguage::Qml &&
                 (m_Tokens.isEmpty() || !isOperand(m_Tokens.last())))
            skipRegularExpression();
        else
            readSign();
    }

    void readSign()
    {
        const int length = isAt("::") ? 2 : 1;
        append(Kind::Sign, m_Source.mid(m_Position, length), here());
        advance(length);
    }

    void readWord()
    {
        const Place place = here();
        const bool isNumber = m_Source.at(m_Position).isDigit();
        const auto start = m_Position;
        while (m_Position < m_Source.size() &&
               (isWordCharacter(m_Source.at(m_Position)) || (isNumber && isAt("'"))))
            advance(1);
        const QString word = m_Source.mid(start, m_Position - start);
        const bool isRaw = m_Language == SourceLanguage::Cpp && word.endsWith(QLatin1Char('R'));
        const QStringList prefixes = {QStringLiteral("u"), QStringLiteral("U"), QStringLiteral("L"),
                                      QStringLiteral("u8")};
        if (isRaw && isAt("\""))
            readRawString(place);
        else if (!(isAt("\"") && prefixes.contains(word)))
            append(isNumber ? Kind::Number : Kind::Identifier, word, place);
    }

    void readOtherQuotes(QChar quote)
    {
        if (m_Language == SourceLanguage::Qml)
            readString(quote);
        else // a character, which is no text
            skipString(quote);
    }

    void readString(QChar quote)
    {
        const Place place = here();
        const bool isTemplate = quote == QLatin1Char('`');
        QString value;
        bool isOpen = false;
        advance(1);
        while (m_Position < m_Source.size() && m_Source.at(m_Position) != quote) {
            if (isAt("\n") && !isTemplate)
                break;
            if (isTemplate && isAt("${")) {
                isOpen = true;
                skipString(quote, false);
                append(Kind::String, value, place, isOpen);
                return;
            }
            if (isAt("\\"))
                value += readEscape();
            else
                value += take();
        }
        advance(1);
        append(Kind::String, value, place, isOpen);
    }

    /** R"delimiter(...)delimiter" */
    void readRawString(const Place& place)
    {
        const auto open = m_Source.indexOf(QLatin1Char('('), m_Position);
        if (open < 0)
            return advance(1);
        const QString end = QLatin1Char(')') + m_Source.mid(m_Position + 1, open - m_Position - 1) +
                            QLatin1Char('"');
        const auto close = m_Source.indexOf(end, open + 1);
        const auto valueEnd = close < 0 ? m_Source.size() : close;
        append(Kind::String, m_Source.mid(open + 1, valueEnd - open - 1), place);
        advance(std::min(valueEnd + end.size(), m_Source.size()) - m_Position);
    }

    /** The character that an escape stands for; the place is behind it then. */
    QString readEscape()
    {
        advance(1); // the backslash
        if (m_Position >= m_Source.size())
            return QString();
        const QChar letter = take();
        switch (letter.unicode()) {
        case u'n':
            return QStringLiteral("\n");
        case u't':
            return QStringLiteral("\t");
        case u'r':
            return QStringLiteral("\r");
        case u'\n':
            return QString(); // the literal goes on in the next line
        case u'x':
        case u'u':
            return readCode();
        default:
            return letter;
        }
    }

    QString readCode()
    {
        constexpr int digits = 4;
        constexpr int hexadecimal = 16;
        int length = 0;
        while (length < digits && isHexadecimal(m_Position + length))
            ++length;
        const ushort code = m_Source.mid(m_Position, length).toUShort(nullptr, hexadecimal);
        advance(length);
        return QChar(code);
    }

    bool isHexadecimal(QString::size_type position) const
    {
        static const QString digits = QStringLiteral("0123456789abcdefABCDEF");
        return position < m_Source.size() && digits.contains(m_Source.at(position));
    }

    void skipString(QChar quote, bool endsWithLine = true)
    {
        advance(1);
        while (m_Position < m_Source.size() && m_Source.at(m_Position) != quote &&
               !(endsWithLine && isAt("\n")))
            advance(isAt("\\") ? 2 : 1);
        advance(1);
    }

    void skipRegularExpression() { skipString(QLatin1Char('/')); }

    void skipTo(const char* end)
    {
        const auto found = m_Source.indexOf(QLatin1String(end), m_Position + 2);
        const auto length = static_cast<QString::size_type>(qstrlen(end));
        advance((found < 0 ? m_Source.size() : found + length) - m_Position);
    }

    QChar take()
    {
        const QChar character = m_Source.at(m_Position);
        advance(1);
        return character;
    }

    void advance(QString::size_type count)
    {
        for (; count > 0 && m_Position < m_Source.size(); --count, ++m_Position) {
            if (m_Source.at(m_Position) == QLatin1Char('\n')) {
                ++m_Line;
                m_LineStart = m_Position + 1;
            } else if (m_Source.at(m_Position).isLowSurrogate()) {
                ++m_LineStart; // the two halves are one character
            }
        }
    }

    bool isAt(const char* text) const
    {
        return QStringView(m_Source).mid(m_Position).startsWith(QLatin1String(text));
    }

    Place here() const { return {m_Line, static_cast<int>(m_Position - m_LineStart) + 1}; }

    void append(Kind kind, const QString& text, const Place& place, bool isOpen = false)
    {
        m_Tokens.append({kind, text, place, isOpen});
    }

    const QString& m_Source;
    const SourceLanguage m_Language;
    QVector<SourceToken> m_Tokens;
    QString::size_type m_Position = 0;
    int m_Line = 1;
    QString::size_type m_LineStart = 0;
};

} // namespace

QVector<SourceToken> tokensOf(const QString& source, SourceLanguage language)
{
    return Tokenizer(source, language).run();
}
