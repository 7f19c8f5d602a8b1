#include "ExchangeTexts.h"

#include "Placeholders.h"
#include "TextLength.h"

#include <QRegularExpression>

namespace
{

using State = ExchangeUnit::State;

/** Whether the pattern, which begins with a percent sign, fits where there is no placeholder. */
bool fitsElsewhere(const QRegularExpression& pattern, const QString& text,
                   const Placeholders& placeholders)
{
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        if (!placeholders.covers(matches.next().capturedStart()))
            return true;
    }
    return false;
}

/**
 * The placeholders by which the tools of gettext are to judge a text; none where they would see
 * some that are none, as in "50 % off".
 */
ExchangeUnit::Placeholders kindOfPlaceholders(const QString& baseText, const QString& text)
{
    using Kind = Placeholder::Kind;
    if (!baseText.contains(QLatin1Char('%')))
        return ExchangeUnit::Placeholders::None;
    const Placeholders base(baseText);
    const Placeholders translated(text, &base);
    const auto isSafe = [&](const QRegularExpression& pattern) {
        return !fitsElsewhere(pattern, baseText, base) && !fitsElsewhere(pattern, text, translated);
    };
    static const QRegularExpression forQt(QStringLiteral("%L?\\d"));
    static const QRegularExpression forPrintf(QStringLiteral("%(?!%)(?<!%%)"));
    if (base.has(Kind::Numbered) || base.has(Kind::Count))
        return isSafe(forQt) ? ExchangeUnit::Placeholders::Qt : ExchangeUnit::Placeholders::None;
    const bool isPrintf = base.has(Kind::Printf) || base.has(Kind::PrintfNumbered);
    return isPrintf && isSafe(forPrintf) ? ExchangeUnit::Placeholders::Printf
                                         : ExchangeUnit::Placeholders::None;
}

ExchangeUnit makeUnit(const ExchangeTexts& texts, const QString& url, bool isShort)
{
    ExchangeUnit unit;
    unit.url = url;
    unit.isShort = isShort;
    unit.baseText = texts.baseText(url, isShort);
    unit.text = texts.side(isShort).language.text(url);
    unit.comment = texts.comment(url, isShort);
    unit.limit = allowedLength(unit.comment).value_or(0);
    unit.placeholders = kindOfPlaceholders(unit.baseText, unit.text);
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
        if (texts.baseText(url, isShort).isEmpty())
            return;
        const ExchangeUnit unit = makeUnit(texts, url, isShort);
        if (isSelected(unit, selection))
            units.append(unit);
    };
    for (const LanguageTexts::Entry& entry : side.base.entries()) {
        if (entry.isListed)
            append(entry.url);
    }
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
    return side(isShort).record.findOldBaseText(url, language, baseText(url, isShort));
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
