#include "PoFormat.h"

#include "PoReader.h"
#include "PoWriter.h"

QByteArray PoFormat::write(const ExchangeFile& file) const
{
    return PoWriter().write(file);
}

std::optional<ExchangeFault> PoFormat::read(const QByteArray& bytes, ExchangeFile& file) const
{
    file = ExchangeFile();
    return PoReader(file).read(bytes);
}
