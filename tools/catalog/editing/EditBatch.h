#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/** What is to be written at one URL. */
struct TextEdit {
    int line = 0; ///< of the batch, from 1; 0 when it comes from the command line
    QString url;
    std::optional<QString> text;
    std::optional<QString> comment;
};

/**
 * Many edits, one a line: JSON objects such as {"url": "Menu/Save", "text": "Save"}, or columns
 * separated by tabs: URL, text and, if wanted, comment. An empty column leaves what is there.
 * Empty lines are passed over.
 */
class EditBatch
{
public:
    explicit EditBatch(const QByteArray& bytes);

    const QVector<TextEdit>& edits() const { return m_Edits; }
    /** Every line that is no edit: "line:column: what is wrong". */
    const QStringList& faults() const { return m_Faults; }

private:
    void readLine(const QByteArray& line, int number);
    void readJson(const QByteArray& line, int number);
    void readColumns(const QString& line, int number);
    void addFault(int line, int column, const QString& fault);

    QVector<TextEdit> m_Edits;
    QStringList m_Faults;
};
