#pragma once

#include "ExchangeFile.h"

#include <QByteArray>
#include <QString>

/** Writes a PO file, laid out as gettext's own tools do. */
class PoWriter
{
public:
    QByteArray write(const ExchangeFile& file);

private:
    void addHeader(const ExchangeFile& file);
    void addEntry(const ExchangeUnit& unit);
    void addComment(const QString& text);
    void addFlags(const ExchangeUnit& unit);
    void addField(QLatin1String keyword, const QString& text, QLatin1String prefix = {});
    void addQuoted(const QString& text, QString::size_type begin, QString::size_type end);

    QString m_Text;
};
