#include "ExchangeTexts.h"

namespace
{

using State = ExchangeUnit::State;

ExchangeUnit makeUnit(const ExchangeTexts& texts, const QString& url, bool isShort,
                      const QString& baseText)
{
    ExchangeUnit unit;
    unit.url = url;
    unit.isShort = isShort;
    unit.baseText = baseText;
    unit.text = texts.side(isShort).language.text(url);
    unit.comment = texts.comment(url, isShort);
    if (isShort) {
        unit.fullBaseText = texts.full.baseText(url);
        unit.fullText = texts.full.language.text(url);
    }
    unit.state = unit.text.isEmpty() ? State::Missing : State::Translated;
    if (unit.text.isEmpty())
        return unit;
    if (const auto oldBaseText = texts.findOldBaseText(url, isShort)) {
        unit.state = State::Stale;
        unit.previousBaseText = *oldBaseText;
    }
    return unit;
}

bool isSelected(const ExchangeUnit& unit, ExchangeSelection selection)
{
    return selection == ExchangeSelection::All ||
           (selection == ExchangeSelection::Missing && unit.state == State::Missing) ||
           (selection == ExchangeSelection::Stale && unit.state == State::Stale);
}

void appendUnits(const ExchangeTexts& texts, bool isShort, ExchangeSelection selection,
                 QVector<ExchangeUnit>& units)
{
    const ExchangeSide& side = texts.side(isShort);
    const auto append = [&](const QString& url) {
        const QString baseText = texts.baseText(url, isShort);
        if (baseText.isEmpty())
            return;
        ExchangeUnit unit = makeUnit(texts, url, isShort, baseText);
        if (isSelected(unit, selection))
            units.append(std::move(unit));
    };
    for (const LanguageTexts::Entry& entry : side.base.entries())
        append(entry.url);
    for (const LanguageTexts::Entry& entry : side.language.entries()) {
        if (!side.base.contains(entry.url))
            append(entry.url);
    }
}

} // namespace

bool ExchangeSide::hasBaseText(const QString& url) const
{
    return base.contains(url) || lastFallback.contains(url);
}

QString ExchangeSide::baseText(const QString& url) const
{
    const QString text = base.text(url);
    return text.isEmpty() ? lastFallback.text(url) : text;
}

QString ExchangeSide::comment(const QString& url) const
{
    return base.contains(url) ? base.comment(url) : lastFallback.comment(url);
}

bool ExchangeTexts::hasBaseText(const QString& url, bool isShort) const
{
    return full.hasBaseText(url) || (isShort && shortTexts.hasBaseText(url));
}

QString ExchangeTexts::baseText(const QString& url, bool isShort) const
{
    const QString shortText = isShort ? shortTexts.baseText(url) : QString();
    return shortText.isEmpty() ? full.baseText(url) : shortText;
}

QString ExchangeTexts::comment(const QString& url, bool isShort) const
{
    return isShort && shortTexts.hasBaseText(url) ? shortTexts.comment(url) : full.comment(url);
}

std::optional<QString> ExchangeTexts::findOldBaseText(const QString& url, bool isShort) const
{
    const BaseTextRecord& record = side(isShort).record;
    return record.isBegun() ? record.findOldBaseText(url, language, baseText(url, isShort))
                            : std::nullopt;
}

ExchangeFile collectUnits(const ExchangeTexts& texts, ExchangeSelection selection)
{
    ExchangeFile file;
    file.baseLanguage = texts.baseLanguage;
    file.language = texts.language;
    appendUnits(texts, false, selection, file.units);
    appendUnits(texts, true, selection, file.units);
    return file;
}
