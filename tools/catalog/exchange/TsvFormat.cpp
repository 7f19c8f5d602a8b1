#include "TsvFormat.h"

#include "Utf8.h"
#include "VisibleControls.h"

#include <QHash>

#include <algorithm>

namespace
{

QString urlTitle()
{
    return QStringLiteral("URL");
}

QString commentTitle()
{
    return QStringLiteral("comment");
}

QString shortTextTitle()
{
    return QStringLiteral("short text");
}

/** Whether a spreadsheet would run the cell as a formula, were it not for apostrophes before it. */
bool isFormula(const QString& cell)
{
    static const QString signs = QStringLiteral("=+-@\t＝＋－＠");
    const auto first = std::find_if(cell.begin(), cell.end(),
                                    [](QChar character) { return character != QLatin1Char('\''); });
    return first != cell.end() && signs.contains(*first);
}

QString writeCell(const QString& text)
{
    QString cell = showControls(text);
    if (isFormula(cell))
        cell.prepend(QLatin1Char('\''));
    const QLatin1Char mark('"');
    const bool needsMarks = std::any_of(cell.begin(), cell.end(), [=](QChar character) {
        return character == mark || character == QLatin1Char('\t') ||
               character == QLatin1Char('\n');
    });
    if (!needsMarks)
        return cell;
    return mark + cell.replace(mark, QStringLiteral("\"\"")) + mark;
}

QString readCell(const QString& cell)
{
    const bool isGuarded = cell.startsWith(QLatin1Char('\'')) && isFormula(cell);
    return hideControls(isGuarded ? cell.mid(1) : cell);
}

/** Cuts the text of a file into rows of cells. */
class Rows
{
public:
    explicit Rows(const QString& text)
        : m_Text(text)
    {
    }

    bool isAtEnd() const { return m_Index == m_Text.size(); }
    /** Line of the next row, from 1. */
    int line() const { return m_Line; }

    /** Goes behind the next row. @return its cells; nothing when quotation marks do not fit. */
    std::optional<QStringList> next()
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

private:
    bool isAt(QLatin1Char character) const
    {
        return m_Index < m_Text.size() && m_Text.at(m_Index) == character;
    }

    bool take(QLatin1Char character)
    {
        if (!isAt(character))
            return false;
        ++m_Index;
        if (character == QLatin1Char('\n'))
            ++m_Line;
        return true;
    }

    std::optional<QString> nextCell()
    {
        if (isAt(QLatin1Char('"')))
            return nextQuotedCell();
        const auto start = m_Index;
        while (m_Index < m_Text.size() && !isAt(QLatin1Char('\t')) && !isAt(QLatin1Char('\n')))
            ++m_Index;
        const bool isBeforeReturn = m_Index > start &&
                                    m_Text.at(m_Index - 1) == QLatin1Char('\r') &&
                                    !isAt(QLatin1Char('\t'));
        return m_Text.mid(start, m_Index - start - (isBeforeReturn ? 1 : 0));
    }

    std::optional<QString> nextQuotedCell()
    {
        const QLatin1Char mark('"');
        QString text;
        while (take(mark)) { // the first one, or the second of two
            if (!text.isNull())
                text += mark;
            const auto end = m_Text.indexOf(mark, m_Index);
            if (end < 0)
                return std::nullopt;
            const QString part = m_Text.mid(m_Index, end - m_Index);
            m_Line += static_cast<int>(part.count(QLatin1Char('\n')));
            text = (text.isNull() ? QStringLiteral("") : text) + part;
            m_Index = end + 1;
        }
        return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    }

    const QString m_Text;
    QString::size_type m_Index = 0;
    int m_Line = 1;
};

/** Spreadsheets write UTF-8 with or without a mark, and UTF-16 with one. */
std::optional<QString> decode(const QByteArray& bytes)
{
    if (!bytes.startsWith("\xFF\xFE") && !bytes.startsWith("\xFE\xFF"))
        return decodeUtf8(withoutByteOrderMark(bytes));
    constexpr auto unit = static_cast<int>(sizeof(char16_t));
    if (bytes.size() % unit != 0)
        return std::nullopt;
    return QString::fromUtf16(reinterpret_cast<const char16_t*>(bytes.constData()),
                              bytes.size() / unit);
}

/** Where the columns are, by the first row. */
struct Columns {
    QStringList::size_type url = -1;
    QStringList::size_type baseText = -1;
    QStringList::size_type text = -1;
    QStringList::size_type shortText = -1;

    /** @return what is wrong with the titles; empty when they can be used. */
    QString read(const QStringList& titles)
    {
        QVector<int> others;
        for (int column = 0; column < titles.size(); ++column) {
            const QString title = titles.at(column).trimmed();
            if (title == urlTitle())
                url = column;
            else if (title == shortTextTitle())
                shortText = column;
            else if (!title.isEmpty() && title != commentTitle())
                others.append(column);
        }
        if (url < 0 || others.size() != 2)
            return QStringLiteral("the first row has to name the columns: URL, the key of the base "
                                  "language, the key of the language, comment, short text; found "
                                  "%1.")
                .arg(titles.join(QStringLiteral(", ")));
        baseText = others.first();
        text = others.last();
        return QString();
    }
};

void appendUnits(const QStringList& cells, const Columns& columns, int line, ExchangeFile& file)
{
    ExchangeUnit unit;
    unit.url = readCell(cells.value(columns.url));
    unit.place = {line, 1};
    if (columns.shortText >= 0 && !cells.value(columns.shortText).isEmpty()) {
        ExchangeUnit shortUnit = unit;
        shortUnit.isShort = true;
        shortUnit.isBaseTextKnown = false;
        shortUnit.text = readCell(cells.at(columns.shortText));
        file.units.append(shortUnit);
    }
    unit.baseText = readCell(cells.value(columns.baseText));
    unit.text = readCell(cells.value(columns.text));
    file.units.append(unit);
}

} // namespace

QByteArray TsvFormat::write(const ExchangeFile& file) const
{
    QHash<QString, const ExchangeUnit*> shortUnits;
    QVector<const ExchangeUnit*> rows;
    QHash<QString, const ExchangeUnit*> fullUnits;
    for (const ExchangeUnit& unit : file.units)
        (unit.isShort ? shortUnits : fullUnits).insert(unit.url, &unit);
    for (const ExchangeUnit& unit : file.units) {
        if (!unit.isShort || !fullUnits.contains(unit.url))
            rows.append(&unit);
    }

    const auto line = [](const QStringList& cells) {
        QStringList written;
        for (const QString& cell : cells)
            written.append(writeCell(cell));
        return written.join(QLatin1Char('\t')) + QLatin1Char('\n');
    };
    const QChar byteOrderMark(QChar::ByteOrderMark);
    QString text = byteOrderMark + line({urlTitle(), file.baseLanguage, file.language,
                                         commentTitle(), shortTextTitle()});
    for (const ExchangeUnit* unit : qAsConst(rows)) {
        const ExchangeUnit* shortUnit = shortUnits.value(unit->url);
        const bool isFull = !unit->isShort;
        text +=
            line({unit->url, isFull ? unit->baseText : QString(), isFull ? unit->text : QString(),
                  unit->comment, shortUnit != nullptr ? shortUnit->text : QString()});
    }
    return text.toUtf8();
}

std::optional<ExchangeFault> TsvFormat::read(const QByteArray& bytes, ExchangeFile& file) const
{
    file = ExchangeFile();
    const std::optional<QString> text = decode(bytes);
    if (!text)
        return ExchangeFault{{}, QStringLiteral("is not encoded in UTF-8. Save it as UTF-8.")};
    Rows rows(*text);
    Columns columns;
    for (bool isFirst = true; !rows.isAtEnd(); isFirst = false) {
        const int line = rows.line();
        const std::optional<QStringList> cells = rows.next();
        if (!cells)
            return ExchangeFault{
                {line, 1},
                QStringLiteral("the quotation marks of this row do not fit. A cell "
                               "that begins with one ends with one, and each "
                               "inside stands twice.")};
        if (isFirst) {
            const QString fault = columns.read(*cells);
            if (!fault.isEmpty())
                return ExchangeFault{{line, 1}, fault};
            file.baseLanguage = cells->at(columns.baseText).trimmed();
            file.language = cells->at(columns.text).trimmed();
        } else if (!cells->join(QString()).isEmpty()) {
            appendUnits(*cells, columns, line, file);
        }
    }
    if (columns.url < 0)
        return ExchangeFault{{1, 1}, QStringLiteral("is empty.")};
    return std::nullopt;
}
