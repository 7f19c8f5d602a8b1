#include "Table.h"

#include <QMap>
#include <QStringList>
#include <QTest>

namespace
{

using Row = QMap<QString, QString>;

QStringList cellsOf(const QString& line)
{
    QStringList cells;
    for (const QString& text : line.split('|'))
        cells.append(text.trimmed());
    return cells;
}

} // namespace

Q_DECLARE_METATYPE(Row)

void addTable(const char* table)
{
    QStringList lines = QString::fromUtf8(table).trimmed().split('\n');
    const QStringList columns = cellsOf(lines.takeFirst());
    QTest::addColumn<Row>("row");
    for (const QString& line : qAsConst(lines)) {
        const QStringList cells = cellsOf(line);
        if (cells.size() != columns.size())
            qFatal("a test's own table is wrong: %s", qPrintable(line));
        Row row;
        for (int column = 0; column < columns.size(); ++column)
            row.insert(columns.at(column), cells.at(column));
        QTest::newRow(qPrintable(line.simplified())) << row;
    }
}

QString cell(const QString& column)
{
    QFETCH(Row, row);
    if (!row.contains(column))
        qFatal("a test's own table has no column %s", qPrintable(column));
    return QString(row.value(column)).replace("\\n", "\n").replace("\\r", "\r");
}
