#include "Table.h"

#include <QRegularExpression>
#include <QTest>

void addTable(const char* table)
{
    const QRegularExpression separator("\\s*[|]\\s*");
    const QRegularExpression continuation("\\s*\\n\\s*[.][.] ");
    QStringList lines =
        QString::fromUtf8(table).replace(continuation, QString()).trimmed().split('\n');
    const QStringList columns = lines.takeFirst().split(separator);
    QTest::addColumn<QVariantMap>("row");
    for (const QString& line : qAsConst(lines)) {
        const QStringList cells = line.trimmed().split(separator);
        if (cells.size() != columns.size())
            qFatal("a test's own table is wrong: %s", qPrintable(line));
        QVariantMap row;
        for (int column = 0; column < columns.size(); ++column)
            row.insert(columns.at(column), cells.at(column));
        QTest::newRow(qPrintable(line.simplified())) << row;
    }
}

QString cell(const QString& column)
{
    QFETCH(QVariantMap, row);
    if (!row.contains(column))
        qFatal("a test's own table has no column %s", qPrintable(column));
    const QString value = row.value(column).toString().replace("\\n", "\n").replace("\\r", "\r");
    return QString(value).replace("→", "\t").replace("″", "\"");
}

bool hasCell(const QString& column)
{
    QFETCH(QVariantMap, row);
    return row.contains(column);
}
