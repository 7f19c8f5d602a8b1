#include "MessageChecks_p.h"

#ifdef TEXTMANAGER_HAS_MESSAGES

#include "MessagePatternInfo.h"

#include <algorithm>

namespace
{

QStringList missingCategories(const MessagePlural& plural, const QString& language)
{
    QStringList missing = MessagePatternInfo::getPluralCategories(language, plural.isOrdinal);
    bool hasOnlyOther = true;
    for (const QString& category : plural.categories) {
        missing.removeOne(category);
        hasOnlyOther = hasOnlyOther && (category == QLatin1String("other") ||
                                        category.startsWith(QLatin1Char('=')));
    }
    return hasOnlyOther ? QStringList() : missing;
}

} // namespace

void findMessageFaults(const TextToCheck& text, TextFindings& findings)
{
    if (!text.text.placeholders.areOfMessage() &&
        (text.base == nullptr || !text.base->placeholders.areOfMessage()))
        return;
    const MessagePatternInfo pattern(text.text.text);
    if (!pattern.isValid())
        findings.append({QStringLiteral("message-syntax"), std::max(pattern.getErrorOffset(), 0),
                         QStringLiteral("The message cannot be formatted: %1. Correct it there.")
                             .arg(pattern.getError())});
    const QVector<MessagePlural> plurals = pattern.getPlurals();
    for (const MessagePlural& plural : plurals) {
        const QStringList missing = missingCategories(plural, text.rules.key());
        if (!missing.isEmpty())
            findings.append(
                {QStringLiteral("plural-missing"), plural.offset,
                 QStringLiteral("The forms for {%1} lack %2, which the language has. Add "
                                "what is said then.")
                     .arg(plural.argument, missing.join(QStringLiteral(", ")))});
    }
}

#else

void findMessageFaults(const TextToCheck&, TextFindings&) {}

#endif
