#pragma once

#include "ExchangeFormat.h"

/** Columns separated by tabs, for spreadsheets: URL, base text, text, comment and short text. */
class TsvFormat : public ExchangeFormat
{
public:
    QString extension() const override { return QStringLiteral("tsv"); }

    QByteArray write(const ExchangeFile& file) const override;
    std::optional<ExchangeFault> read(const QByteArray& bytes, ExchangeFile& file) const override;
};
