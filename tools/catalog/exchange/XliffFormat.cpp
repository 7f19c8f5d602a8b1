#include "XliffFormat.h"

#include "LanguageTags.h"
#include "XliffReader.h"
#include "XliffWriter.h"

QString XliffFormat::findRefusal(const QString& languageKey) const
{
    return tagOfLanguage(languageKey).isEmpty() ? explainMissingTag(languageKey) : QString();
}

QByteArray XliffFormat::write(const ExchangeFile& file) const
{
    return XliffWriter().write(file);
}

std::optional<ExchangeFault> XliffFormat::read(const QByteArray& bytes, ExchangeFile& file) const
{
    file = ExchangeFile();
    return XliffReader(bytes, file).read();
}
