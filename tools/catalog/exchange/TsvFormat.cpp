#include "TsvFormat.h"

#include "ExchangeEncoding.h"
#include "LanguageTags.h"
#include "TextKey.h"
#include "TsvRows.h"
#include "VisibleControls.h"

#include <QHash>
#include <QSet>

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

void appendCell(const QString& text, QString& row)
{
    const QLatin1Char mark('"');
    QString cell = showControls(text);
    if (isFormula(cell))
        cell.prepend(QLatin1Char('\''));
    const bool needsMarks = std::any_of(cell.begin(), cell.end(), [=](QChar character) {
        return character == mark || character == QLatin1Char('\t') ||
               character == QLatin1Char('\n');
    });
    if (needsMarks)
        row += mark + cell.replace(mark, QStringLiteral("\"\"")) + mark;
    else
        row += cell;
}

void appendRow(std::initializer_list<QString> cells, QString& text)
{
    for (const QString& cell : cells) {
        appendCell(cell, text);
        text += QLatin1Char('\t');
    }
    text[text.size() - 1] = QLatin1Char('\n');
}

QString readCell(const QString& cell)
{
    const bool isGuarded = cell.startsWith(QLatin1Char('\'')) && isFormula(cell);
    return hideControls(isGuarded ? cell.mid(1) : cell);
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
        const auto isNoLanguage = [&](int column) {
            return tagOfLanguage(titles.at(column).trimmed()).isEmpty();
        };
        if (others.size() > 2) // a column of notes, say
            others.erase(std::remove_if(others.begin(), others.end(), isNoLanguage), others.end());
        if (url < 0 || others.size() != 2)
            return QStringLiteral("the first row has to name the columns: URL, the key of the base "
                                  "language, the key of the language, comment, short text; found "
                                  "%1.")
                .arg(titles.join(QStringLiteral(", ")));
        // The base's comes first: without that, a file of another base would be read the wrong way.
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
    QHash<TextKey, const ExchangeUnit*> shortUnits;
    QSet<TextKey> fullUrls;
    for (const ExchangeUnit& unit : file.units) {
        if (unit.isShort)
            shortUnits.insert(unit.url, &unit);
        else
            fullUrls.insert(unit.url);
    }
    QString text(QChar::ByteOrderMark);
    appendRow({urlTitle(), file.baseLanguage, file.language, commentTitle(), shortTextTitle()},
              text);
    for (const ExchangeUnit& unit : file.units) {
        if (unit.isShort && fullUrls.contains(unit.url))
            continue;
        const ExchangeUnit* shortUnit = shortUnits.value(unit.url);
        appendRow({unit.url, unit.isShort ? unit.fullBaseText : unit.baseText,
                   unit.isShort ? unit.fullText : unit.text, unit.comment,
                   shortUnit != nullptr ? shortUnit->text : QString()},
                  text);
    }
    return text.toUtf8();
}

std::optional<ExchangeFault> TsvFormat::read(const QByteArray& bytes, ExchangeFile& file) const
{
    file = ExchangeFile();
    const std::optional<QString> text = decodeUtf(bytes);
    if (!text)
        return ExchangeFault{{}, QStringLiteral("is not encoded in UTF-8. Save it as UTF-8.")};
    TsvRows rows(*text);
    Columns columns;
    QStringList::size_type columnCount = 0;
    for (bool isFirst = true; !rows.isAtEnd(); isFirst = false) {
        const int line = rows.line();
        const std::optional<QStringList> cells = rows.next();
        if (!cells)
            return ExchangeFault{
                {line, 1},
                QStringLiteral("the quotation marks of this row do not fit. A cell "
                               "that begins with one ends with one, and each "
                               "inside stands twice.")};
        if (rows.isAtEnd() && !text->endsWith(QLatin1Char('\n')) && cells->size() < columnCount)
            return ExchangeFault{
                {line, 1},
                QStringLiteral("the file is cut off in this row, which has %1 of "
                               "%2 cells. Save it anew.")
                    .arg(QString::number(cells->size()), QString::number(columnCount))};
        if (isFirst) {
            columnCount = cells->size();
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
