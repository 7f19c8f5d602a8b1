#pragma once

#include "ExchangeFormat.h"

/** PO, the files of gettext and of the tools around it. */
class PoFormat : public ExchangeFormat
{
public:
    QString extension() const override { return QStringLiteral("po"); }

    QByteArray write(const ExchangeFile& file) const override;
    std::optional<ExchangeFault> read(const QByteArray& bytes, ExchangeFile& file) const override;
};
