#pragma once

#include "ExchangeFile.h"

#include <QByteArray>
#include <QString>
#include <QXmlStreamWriter>

/** Writes an XLIFF 1.2 file, each element a line. */
class XliffWriter
{
public:
    XliffWriter();

    QByteArray write(const ExchangeFile& file);

private:
    void writeAttribute(const QString& name, const QString& value);
    void writeUnits(const QVector<ExchangeUnit>& units);
    void writeUnit(const ExchangeUnit& unit);
    void writeLimit(const QString& comment);
    void writePrevious(const ExchangeUnit& unit);
    void writeText(const QString& element, const QString& text);

    QString m_Text; ///< in UTF-8, as what names no encoding is
    QXmlStreamWriter m_Writer;
};
