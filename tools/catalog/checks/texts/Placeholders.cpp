#include "Placeholders.h"

#include "TextKey.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{

using Kind = Placeholder::Kind;

/**
 * All forms with a percent sign. What is captured is put together to the name: a star of width and
 * of precision, each of which takes a value, the number, and the conversion.
 */
QRegularExpression makePercentPattern(bool areDigitsWidths)
{
    const QString conversion = QStringLiteral("(?:hh?|ll?|[Lqjzt])?[diouxXfFeEgGaAcspS]");
    const QString positioned =
        QStringLiteral("%(?<position>\\d+\\$)[-+#0']*\\d*(?:\\.\\d+)?(?<positioned>") + conversion +
        QStringLiteral(")(?!\\p{L})");
    const QString precise =
        QStringLiteral("%[-+#0']*\\d*\\.\\d+(?<precise>") + conversion + QLatin1Char(')');
    const QString number = QStringLiteral("%L?(?<number>[1-9]\\d?)");
    const QString wide =
        QStringLiteral("%[-+#0']*\\d+(?<wide>") + conversion + QStringLiteral(")(?!\\p{L})");
    // A minus sign and a nought mean nothing without a width ("100%-ig").
    const QString plain =
        QStringLiteral("%(?:[-+#0']*(?<width>\\*)|[+#']*)(?:\\.(?<precision>\\*))?(?<plain>") +
        conversion + QLatin1Char(')');
    QStringList forms = {QStringLiteral("%%(?!L?\\d)"), positioned, precise,
                         QStringLiteral("%L?(?<count>n)")};
    forms += areDigitsWidths ? QStringList{wide, number} : QStringList{number, wide};
    forms += plain;
    return QRegularExpression(forms.join(QLatin1Char('|')));
}

/** What stands for a value in braces: its name, and the type if it is an argument of a message. */
const QRegularExpression& bracePattern()
{
    static const QRegularExpression pattern(
        QStringLiteral("\\G\\{\\s*([\\p{L}\\p{N}_][\\p{L}\\p{M}\\p{N}_.-]*)\\s*"
                       "(?:\\}|,\\s*(plural|select|selectordinal|number|date|time|choice|spellout|"
                       "ordinal|duration)\\b)"));
    return pattern;
}

bool isDigitAt(const QString& text, QString::size_type offset)
{
    return offset >= 0 && text.at(offset).isDigit();
}

bool isLetterAt(const QString& text, QString::size_type offset)
{
    return offset < text.size() && text.at(offset).isLetter();
}

/** Those of @p names that are not in @p others, or not as often. */
QStringList without(QStringList names, const QStringList& others)
{
    for (const QString& other : others)
        names.removeOne(other);
    return names;
}

/** "%s %d" as "%1$s %2$d". */
QStringList withPositions(const QStringList& names)
{
    QStringList numbered;
    for (const QString& name : names)
        numbered.append(QLatin1Char('%') + QString::number(numbered.size() + 1) + QLatin1Char('$') +
                        name.mid(1));
    return numbered;
}

} // namespace

Placeholders::Placeholders(const QString& text, const Placeholders* base)
{
    findPercentForms(text, base != nullptr ? base->m_Percentages : QStringList());
    findBraceForms(text);
}

bool Placeholders::has(Placeholder::Kind kind) const
{
    return std::any_of(m_All.begin(), m_All.end(),
                       [=](const Placeholder& placeholder) { return placeholder.kind == kind; });
}

bool Placeholders::covers(QString::size_type offset) const
{
    return std::any_of(m_All.begin(), m_All.end(), [=](const Placeholder& placeholder) {
        return offset >= placeholder.offset && offset < placeholder.offset + placeholder.length;
    });
}

PlaceholderDifference Placeholders::compareWithBase(const Placeholders& base) const
{
    PlaceholderDifference difference;
    if (m_All.isEmpty() && base.m_All.isEmpty())
        return difference;

    QStringList expected = base.namesOf(false);
    QStringList expectedInOrder = base.namesOf(true);
    if (has(Kind::PrintfNumbered) && !base.has(Kind::PrintfNumbered)) {
        expected += withPositions(expectedInOrder);
        expectedInOrder.clear();
    }
    const QStringList found = namesOf(false);
    const QStringList foundInOrder = namesOf(true);
    difference.missing = without(expected, found) + without(expectedInOrder, foundInOrder);
    difference.superfluous = without(found, expected) + without(foundInOrder, expectedInOrder);
    difference.isOrderOther = difference.missing.isEmpty() && difference.superfluous.isEmpty() &&
                              foundInOrder != expectedInOrder;
    if (!difference.superfluous.isEmpty())
        difference.offset = offsetOf(difference.superfluous.first());
    return difference;
}

void Placeholders::findPercentForms(const QString& text, const QStringList& percentagesOfBase)
{
    if (!text.contains(QLatin1Char('%')))
        return;
    static const QRegularExpression withWidths = makePercentPattern(true);
    static const QRegularExpression withNumbers = makePercentPattern(false);
    static const QRegularExpression first(QStringLiteral("%L?1(?![\\d$])"));
    static const QRegularExpression percentage(QStringLiteral("(?<![%L\\d])(\\d+)\\s?%"));

    const bool isForQt = text.contains(first);
    auto matches = (isForQt ? withNumbers : withWidths).globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        Placeholder placeholder;
        placeholder.offset = match.capturedStart();
        placeholder.length = match.capturedLength();
        const QString captured = match.capturedTexts().mid(1).join(QString());
        const bool isNumber = !match.captured(QStringLiteral("number")).isEmpty();
        const bool isWord = isDigitAt(text, placeholder.offset - 1) &&
                            isLetterAt(text, placeholder.offset + placeholder.length);
        if (captured.isEmpty() || (isWord && !isNumber) || percentagesOfBase.contains(captured))
            continue;
        placeholder.name = QLatin1Char('%') + captured;
        placeholder.kind = isNumber                              ? Kind::Numbered
                           : captured == QLatin1String("n")      ? Kind::Count
                           : captured.contains(QLatin1Char('$')) ? Kind::PrintfNumbered
                                                                 : Kind::Printf;
        m_All.append(placeholder);
    }
    auto percentages = percentage.globalMatch(text);
    while (percentages.hasNext())
        m_Percentages.append(percentages.next().captured(1));
}

void Placeholders::findBraceForms(const QString& text)
{
    // Braces in a plural hold its parts, which are texts again: {n, plural, one {# file} ...}.
    enum class Brace { Argument, Text };
    QVector<Brace> open;
    for (QString::size_type at = text.indexOf(QLatin1Char('{')); at >= 0 && at < text.size();
         ++at) {
        if (text.at(at) == QLatin1Char('}') && !open.isEmpty())
            open.removeLast();
        if (text.at(at) != QLatin1Char('{'))
            continue;
        const bool isPart = !open.isEmpty() && open.last() == Brace::Argument;
        const QRegularExpressionMatch match =
            isPart ? QRegularExpressionMatch() : bracePattern().match(text, at);
        if (!match.hasMatch()) {
            open.append(Brace::Text);
            continue;
        }
        m_All.append({Kind::Named, QStringLiteral("{%1}").arg(match.captured(1)), at,
                      match.capturedLength()});
        if (!match.captured(2).isEmpty()) {
            open.append(Brace::Argument);
            m_AreOfMessage = true;
        }
        at = match.capturedEnd() - 1;
    }
}

QStringList Placeholders::namesOf(bool isPrintf) const
{
    QStringList names;
    for (const Placeholder& placeholder : m_All) {
        if ((placeholder.kind == Kind::Printf) == isPrintf)
            names.append(placeholder.name);
    }
    if (!isPrintf)
        removeRepeated(names);
    return names;
}

QString::size_type Placeholders::offsetOf(const QString& name) const
{
    const auto it = std::find_if(m_All.begin(), m_All.end(), [&](const Placeholder& placeholder) {
        return placeholder.name == name;
    });
    return it == m_All.end() ? 0 : it->offset;
}
