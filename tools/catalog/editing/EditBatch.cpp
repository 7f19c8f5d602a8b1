#include "EditBatch.h"

#include "JsonTree.h"
#include "Utf8.h"

#include "LanguageDefinitions.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace
{

std::optional<QString> unlessEmpty(const QString& text)
{
    return text.isEmpty() ? std::nullopt : std::optional<QString>(text);
}

/**
 * The text of a cell: spreadsheets write some in quotation marks, and then each of its own twice.
 * Nothing when the marks do not fit, as in the part of a cell that goes on in the next line.
 */
std::optional<QString> unquote(const QString& cell)
{
    const QLatin1Char mark('"');
    const QString doubleMark(2, mark);
    if (!cell.startsWith(mark))
        return cell;
    QString text = cell.mid(1, cell.size() - 2);
    const bool isSound =
        cell.size() > 1 && cell.endsWith(mark) && !QString(text).remove(doubleMark).contains(mark);
    if (!isSound)
        return std::nullopt;
    return text.replace(doubleMark, QString(mark));
}

} // namespace

EditBatch::EditBatch(const QByteArray& bytes)
{
    int number = 0;
    for (QByteArray line : withoutByteOrderMark(bytes).split('\n')) {
        ++number;
        if (line.endsWith('\r'))
            line.chop(1);
        if (!line.trimmed().isEmpty())
            readLine(line, number);
    }
}

void EditBatch::readLine(const QByteArray& line, int number)
{
    const std::optional<QString> text = decodeUtf8(line);
    if (!text)
        addFault(number, 1, QStringLiteral("is not encoded in UTF-8. Save the batch as UTF-8."));
    else if (line.trimmed().startsWith('{'))
        readJson(line, number);
    else
        readColumns(*text, number);
}

void EditBatch::readJson(const QByteArray& line, int number)
{
    const JsonTree tree(line);
    if (!tree.isSound()) {
        addFault(number, tree.fault()->column, tree.fault()->reason + QLatin1Char('.'));
        return;
    }
    if (!tree.repeatedKeys().empty()) {
        const int key = tree.repeatedKeys().front();
        addFault(number, tree.keyPlace(key).column,
                 QStringLiteral("\"%1\" stands there twice.").arg(tree.pathOf(key)));
        return;
    }
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    TextEdit edit;
    edit.line = number;
    for (auto member = object.begin(); member != object.end(); ++member) {
        const bool isUrl = member.key() == QLatin1String("url");
        const bool isText = member.key() == LanguageDefinitions::getJsonTextName();
        const bool isComment = member.key() == LanguageDefinitions::getJsonCommentName();
        if (!(isUrl || isText || isComment) || !member.value().isString()) {
            addFault(number, 1,
                     QStringLiteral("unexpected \"%1\"; expected an object with \"url\" and "
                                    "\"text\" or \"comment\", or both, each a string.")
                         .arg(member.key()));
            return;
        }
        if (isUrl)
            edit.url = member.value().toString();
        else
            (isText ? edit.text : edit.comment) = member.value().toString();
    }
    if (!object.contains(QLatin1String("url")) || !(edit.text || edit.comment))
        addFault(number, 1,
                 QStringLiteral("expected an object with \"url\" and \"text\" or \"comment\", or "
                                "both, each a string."));
    else
        m_Edits.append(edit);
}

void EditBatch::readColumns(const QString& line, int number)
{
    QStringList columns;
    for (const QString& cell : line.split(QLatin1Char('\t'))) {
        const std::optional<QString> text = unquote(cell);
        if (!text) {
            addFault(number, 1,
                     QStringLiteral("the quotation marks of column %1 do not fit. Write texts that "
                                    "hold tabs or line breaks as JSON.")
                         .arg(columns.size() + 1));
            return;
        }
        columns.append(*text);
    }
    const TextEdit edit{number, columns.first(), unlessEmpty(columns.value(1)),
                        unlessEmpty(columns.value(2))};
    if (columns.size() <= 3 && (edit.text || edit.comment)) {
        m_Edits.append(edit);
        return;
    }
    const QString found = columns.size() <= 3 ? QStringLiteral("a URL alone")
                                              : QStringLiteral("%1 columns").arg(columns.size());
    addFault(
        number, 1,
        QStringLiteral("found %1; expected a URL, a text and, if wanted, a comment, with a tab "
                       "between two of them. Write texts that are empty or hold tabs or line "
                       "breaks as JSON.")
            .arg(found));
}

void EditBatch::addFault(int line, int column, const QString& fault)
{
    m_Faults.append(
        QStringLiteral("%1:%2: %3").arg(QString::number(line), QString::number(column), fault));
}
