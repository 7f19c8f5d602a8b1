#pragma once

#include "ExchangeFile.h"

#include <QString>

/** How a text is named in a PO file: by its URL, and a mark behind it when it is a short text. */
namespace PoContext
{
QString write(const QString& url, bool isShort);
void read(const QString& context, ExchangeUnit& unit);
} // namespace PoContext
