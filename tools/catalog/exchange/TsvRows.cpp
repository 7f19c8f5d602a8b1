#include "TsvRows.h"

TsvRows::TsvRows(const QString& text)
    : m_Text(text)
{
}

std::optional<QStringList> TsvRows::next()
{
    QStringList cells;
    do {
        std::optional<QString> text = nextCell();
        if (!text)
            return std::nullopt;
        cells.append(*text);
    } while (take(QLatin1Char('\t')));
    take(QLatin1Char('\r'));
    if (!isAtEnd() && !take(QLatin1Char('\n')))
        return std::nullopt;
    return cells;
}

bool TsvRows::isAt(QLatin1Char character) const
{
    return m_Index < m_Text.size() && m_Text.at(m_Index) == character;
}

bool TsvRows::take(QLatin1Char character)
{
    if (!isAt(character))
        return false;
    ++m_Index;
    if (character == QLatin1Char('\n'))
        ++m_Line;
    return true;
}

std::optional<QString> TsvRows::nextCell()
{
    if (isAt(QLatin1Char('"')))
        return nextQuotedCell();
    const auto start = m_Index;
    while (m_Index < m_Text.size() && !isAt(QLatin1Char('\t')) && !isAt(QLatin1Char('\n')))
        ++m_Index;
    const bool isBeforeReturn =
        m_Index > start && m_Text.at(m_Index - 1) == QLatin1Char('\r') && !isAt(QLatin1Char('\t'));
    return m_Text.mid(start, m_Index - start - (isBeforeReturn ? 1 : 0));
}

std::optional<QString> TsvRows::nextQuotedCell()
{
    const QLatin1Char mark('"');
    QString text;
    for (bool isFirst = true; take(mark); isFirst = false) {
        if (!isFirst) // the second of two
            text += mark;
        const auto end = m_Text.indexOf(mark, m_Index);
        if (end < 0)
            return std::nullopt;
        const QString part = m_Text.mid(m_Index, end - m_Index);
        m_Line += static_cast<int>(part.count(QLatin1Char('\n')));
        text += part;
        m_Index = end + 1;
    }
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}
