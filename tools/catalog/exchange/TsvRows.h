#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/** Cuts the text of a file into rows of cells, as spreadsheets write them. */
class TsvRows
{
public:
    explicit TsvRows(const QString& text);

    bool isAtEnd() const { return m_Index == m_Text.size(); }
    /** Line of the next row, from 1. */
    int line() const { return m_Line; }

    /** Goes behind the next row. @return its cells; nothing when quotation marks do not fit. */
    std::optional<QStringList> next();

private:
    bool isAt(QLatin1Char character) const;
    bool take(QLatin1Char character);
    std::optional<QString> nextCell();
    std::optional<QString> nextQuotedCell();

    const QString m_Text;
    QString::size_type m_Index = 0;
    int m_Line = 1;
};
