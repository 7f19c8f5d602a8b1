#pragma once

#include "ExchangeFormat.h"

/** XLIFF 1.2, the XML of most translators' tools. Refuses document types and entities of a file's
 * own. */
class XliffFormat : public ExchangeFormat
{
public:
    QString extension() const override { return QStringLiteral("xlf"); }
    QString findRefusal(const QString& languageKey) const override;
    QByteArray write(const ExchangeFile& file) const override;
    std::optional<ExchangeFault> read(const QByteArray& bytes, ExchangeFile& file) const override;
};
