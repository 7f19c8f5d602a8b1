#include "ComparingChecks_p.h"

#include <QStringList>

namespace
{

QString list(const QStringList& names)
{
    return names.join(QStringLiteral(", "));
}

/** Whether a word is one for people: not a placeholder, a number or a sign. */
bool hasLetters(const QString& word)
{
    if (word.contains(QLatin1Char('%')) || word.contains(QLatin1Char('{')))
        return false;
    return std::any_of(word.begin(), word.end(),
                       [](QChar character) { return character.isLetter(); });
}

int wordsOf(const QString& text)
{
    const QStringList words = text.simplified().split(QLatin1Char(' '));
    return static_cast<int>(std::count_if(words.begin(), words.end(), hasLetters));
}

} // namespace

void findOtherPlaceholders(const TextToCheck& text, TextFindings& findings)
{
    if (text.base == nullptr)
        return;
    const PlaceholderDifference difference =
        text.text.placeholders.compareWithBase(text.base->placeholders);
    const bool isMessageBroken =
        !findings.isEmpty() && findings.first().id == QLatin1String("message-syntax");
    if (difference.isNone() || isMessageBroken)
        return;
    QStringList faults;
    if (!difference.missing.isEmpty())
        faults.append(QStringLiteral("lacks %1").arg(list(difference.missing)));
    if (!difference.superfluous.isEmpty())
        faults.append(QStringLiteral("has %1, for which there is no value")
                          .arg(list(difference.superfluous)));
    if (difference.isOrderOther)
        faults.append(
            QStringLiteral("has the placeholders in another order, so that values land in "
                           "the wrong places"));
    findings.append({QStringLiteral("placeholders-differ"), difference.offset,
                     QStringLiteral("The text %1. Use the placeholders of the base's text, \"%2\".")
                         .arg(faults.join(QStringLiteral(" and ")), text.base->text)});
}

void findOtherMarkup(const TextToCheck& text, TextFindings& findings)
{
    MarkupTags::Fault fault = text.text.tags.findUnbalanced();
    const bool isBaseUnbalanced =
        text.base != nullptr && !text.base->tags.findUnbalanced().reason.isEmpty();
    if (text.base != nullptr && (fault.reason.isEmpty() || isBaseUnbalanced))
        fault = text.text.tags.compareWithBase(text.base->tags);
    if (!fault.reason.isEmpty())
        findings.append(
            {QStringLiteral("markup-differs"), fault.offset,
             QStringLiteral("Of the tags, %1. Write them as the base does, each closed.")
                 .arg(fault.reason)});
}

void findOtherData(const TextToCheck& text, TextFindings& findings)
{
    if (text.base == nullptr)
        return;
    const QStringList missing = text.text.data.findMissing(text.base->data);
    if (!missing.isEmpty())
        findings.append(
            {QStringLiteral("data-differs"), 0,
             QStringLiteral("The text lacks %1 of the base's text. Take it over as it is, "
                            "numbers as the language writes them.")
                 .arg(list(missing))});
}

void findOtherLineBreaks(const TextToCheck& text, TextFindings& findings)
{
    if (text.base == nullptr)
        return;
    const int found = text.text.lineBreaks;
    const int expected = text.base->lineBreaks;
    if (found != expected)
        findings.append({QStringLiteral("line-breaks-differ"), 0,
                         QStringLiteral("The text has %1 line breaks, the base's has %2. Break it "
                                        "into as many lines.")
                             .arg(found)
                             .arg(expected)});
}

void findOtherEndMark(const TextToCheck& text, TextFindings& findings)
{
    using EndMark = WritingRules::EndMark;
    if (text.base == nullptr)
        return;
    const EndMark found = text.rules.endMarkOf(text.text.text);
    const EndMark expected = text.rulesOfBase.endMarkOf(text.base->text);
    const auto mayBeNone = [&](EndMark mark) {
        return mark == EndMark::None || mark == EndMark::Dot ||
               (mark == EndMark::FullStop && !text.rules.needsFullStops());
    };
    const auto isOfDots = [](EndMark mark) {
        return mark == EndMark::FullStop || mark == EndMark::Ellipsis;
    };
    const bool isMaybeAbbreviation = (found == EndMark::Dot && isOfDots(expected)) ||
                                     (expected == EndMark::Dot && isOfDots(found));
    if (found == expected || (mayBeNone(found) && mayBeNone(expected)) || isMaybeAbbreviation)
        return;
    findings.append(
        {QStringLiteral("end-punctuation"), text.text.text.size() - 1,
         QStringLiteral("The text ends with %1, the base's with %2. Let both end alike.")
             .arg(WritingRules::nameOf(found), WritingRules::nameOf(expected))});
}

void findCopyOfBase(const TextToCheck& text, TextFindings& findings)
{
    if (text.base == nullptr || text.text.text != text.base->text || text.rules.isPosix() ||
        text.rulesOfBase.isPosix() || text.rules.isVarietyOf(text.rulesOfBase))
        return;
    if (wordsOf(text.text.text) >= 3)
        findings.append(
            {QStringLiteral("same-as-base"), 0,
             QStringLiteral("The text is the base's letter for letter. Translate it, or "
                            "leave it empty until it is translated.")});
}
