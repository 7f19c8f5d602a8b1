#include "TextChecks.h"

#include "ComparingChecks_p.h"
#include "MessageChecks_p.h"
#include "StyleChecks_p.h"
#include "TextLength.h"

#include <algorithm>

namespace
{

bool isLineBreak(QChar character)
{
    return character == QLatin1Char('\n') || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

} // namespace

AnalyzedText::AnalyzedText(const QString& wholeText, const AnalyzedText* base)
    : text(wholeText)
    , placeholders(text, base != nullptr ? &base->placeholders : nullptr)
    , tags(text)
    , data(text, placeholders, tags)
    , lineBreaks(static_cast<int>(std::count_if(text.begin(), text.end(), isLineBreak)))
{
}

TextFindings checkText(const TextToCheck& text)
{
    using Check = void (*)(const TextToCheck&, TextFindings&);
    constexpr Check checks[] = {findMessageFaults,      findOtherPlaceholders, findOtherMarkup,
                                findOtherData,          findOtherLineBreaks,   findOtherEndMark,
                                findCopyOfBase,         findEdgeSpace,         findDoubleSpace,
                                findInvisibleCharacter, findRepeatedWord,      findTooLongText};
    TextFindings findings;
    for (const Check check : checks)
        check(text, findings);
    return findings;
}

TextFindings checkShortText(const TextToCheck& text, const ShortTextLimits& limits)
{
    TextFindings findings = checkText(text);
    const QString& own = text.text.text;
    if (limits.longest > 0 && isLongerThan(own, limits.longest)) {
        // Two limits, one text that is too long.
        findings.erase(std::remove_if(findings.begin(), findings.end(),
                                      [](const TextFinding& finding) {
                                          return finding.id == QLatin1String("too-long");
                                      }),
                       findings.end());
        findings.append(
            {QStringLiteral("short-text-too-long"), 0,
             QStringLiteral("The short text has %1 characters, and %2 have room. Shorten it.")
                 .arg(lengthOf(own))
                 .arg(limits.longest)});
    }
    const auto isLonger = [](const QString& shortText, const QString& fullText) {
        return !fullText.isEmpty() && isLongerThan(shortText, lengthOf(fullText));
    };
    const bool isBaseLonger =
        text.base != nullptr && isLonger(text.base->text, limits.fullTextOfBase);
    if (isLonger(own, limits.fullText) && !isBaseLonger)
        findings.append(
            {QStringLiteral("short-text-longer"), 0,
             QStringLiteral("The short text is longer than the full one, \"%1\". Remove "
                            "it, and the full one is shown.")
                 .arg(limits.fullText)});
    return findings;
}
