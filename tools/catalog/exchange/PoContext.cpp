#include "PoContext.h"

#include "VisibleControls.h"

namespace
{

QString shortMark()
{
    return QStringLiteral(" (short text)");
}

} // namespace

QString PoContext::write(const QString& url, bool isShort)
{
    QString context = showControls(url);
    // A URL that ends as the mark of short texts does is told from them by its last character.
    if (context.endsWith(shortMark()))
        context = context.chopped(1) + codeOf(context.back());
    return isShort ? context + shortMark() : context;
}

void PoContext::read(const QString& context, ExchangeUnit& unit)
{
    unit.isShort = context.endsWith(shortMark());
    unit.url = hideControls(unit.isShort ? context.chopped(shortMark().size()) : context);
}
