#include "MessagePatternInfo.h"

#include "Icu.h"

#include <unicode/messagepattern.h>
#include <unicode/msgfmt.h>
#include <unicode/plurrule.h>
#include <unicode/strenum.h>

#include <algorithm>
#include <memory>

namespace
{

using icu::MessagePattern;

constexpr int deepestNesting = 100;

/** ICU reads a pattern recursively: one that is nested without end would take the whole stack. */
int offsetOfTooDeepBrace(const QString& pattern)
{
    int depth = 0;
    for (int offset = 0; offset < pattern.size(); ++offset) {
        if (pattern.at(offset) == QLatin1Char('{') && ++depth > deepestNesting)
            return offset;
        if (pattern.at(offset) == QLatin1Char('}'))
            --depth;
    }
    return -1;
}

bool isStart(const MessagePattern::Part& part)
{
    return part.getType() == UMSGPAT_PART_TYPE_ARG_START;
}

/** Where the innermost argument starts that was not read to its end; 0 when all were. */
int offsetOfOpenArgument(const MessagePattern& parts)
{
    QVector<int> open = {0};
    for (int index = 0; index < parts.countParts(); ++index) {
        if (isStart(parts.getPart(index)))
            open.append(parts.getPatternIndex(index));
        else if (parts.getPartType(index) == UMSGPAT_PART_TYPE_ARG_LIMIT)
            open.removeLast();
    }
    return open.last();
}

UErrorCode compile(const QString& pattern)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::MessageFormat format(Icu::view(pattern), icu::Locale::getRoot(), status);
    return status;
}

/** Where the innermost argument starts whose format is none: it fails on its own. */
int offsetOfWrongFormat(const MessagePattern& parts, const QString& pattern)
{
    for (int index = parts.countParts() - 1; index >= 0; --index) {
        if (!isStart(parts.getPart(index)))
            continue;
        const int start = parts.getPatternIndex(index);
        const int end = parts.getPart(parts.getLimitPartIndex(index)).getLimit();
        if (U_FAILURE(compile(pattern.mid(start, end - start))) != 0)
            return start;
    }
    return 0;
}

bool isName(UMessagePatternPartType type)
{
    return type == UMSGPAT_PART_TYPE_ARG_NAME || type == UMSGPAT_PART_TYPE_ARG_NUMBER;
}

QString textOf(const MessagePattern& parts, int index)
{
    return Icu::toQt(parts.getSubstring(parts.getPart(index)));
}

QStringList argumentNames(const MessagePattern& parts)
{
    QStringList names;
    for (int index = 0; index < parts.countParts(); ++index) {
        if (isName(parts.getPartType(index)))
            names.append(textOf(parts, index));
    }
    names.sort();
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

/** @param start index of the part that opens the argument. */
MessagePlural readPlural(const MessagePattern& parts, int start)
{
    MessagePlural plural;
    plural.argument = textOf(parts, start + 1);
    plural.isOrdinal = parts.getPart(start).getArgType() == UMSGPAT_ARG_TYPE_SELECTORDINAL;
    plural.offset = parts.getPatternIndex(start);
    const int limit = parts.getLimitPartIndex(start);
    for (int index = start + 1; index < limit; ++index) {
        if (parts.getPartType(index) == UMSGPAT_PART_TYPE_ARG_SELECTOR)
            plural.categories.append(textOf(parts, index));
        else if (parts.getPartType(index) == UMSGPAT_PART_TYPE_MSG_START)
            index = parts.getLimitPartIndex(index); // past what is nested
    }
    return plural;
}

QVector<MessagePlural> readPlurals(const MessagePattern& parts)
{
    QVector<MessagePlural> plurals;
    for (int index = 0; index < parts.countParts(); ++index) {
        const MessagePattern::Part& part = parts.getPart(index);
        if (isStart(part) && UMSGPAT_ARG_TYPE_HAS_PLURAL_STYLE(part.getArgType()))
            plurals.append(readPlural(parts, index));
    }
    return plurals;
}

} // namespace

MessagePatternInfo::MessagePatternInfo(const QString& pattern)
{
    m_ErrorOffset = offsetOfTooDeepBrace(pattern);
    if (m_ErrorOffset >= 0) {
        m_StrError = QStringLiteral("arguments nested deeper than %1").arg(deepestNesting);
        return;
    }
    UErrorCode status = U_ZERO_ERROR;
    UParseError place = {};
    const MessagePattern parts(Icu::view(pattern), &place, status);
    m_Arguments = argumentNames(parts);
    if (U_FAILURE(status) != 0) {
        m_StrError = Icu::describe(status);
        // ICU gives some faults the place 0, which are those of an argument as a whole.
        m_ErrorOffset = place.offset > 0 ? place.offset : offsetOfOpenArgument(parts);
        return;
    }
    status = compile(pattern);
    if (U_FAILURE(status) != 0) {
        m_StrError = Icu::describe(status);
        m_ErrorOffset = offsetOfWrongFormat(parts, pattern);
        return;
    }
    m_Plurals = readPlurals(parts);
}

QStringList MessagePatternInfo::getPluralCategories(const QString& languageKey, bool isOrdinal)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::PluralRules> rules(icu::PluralRules::forLocale(
        Icu::localeOf(languageKey), isOrdinal ? UPLURAL_TYPE_ORDINAL : UPLURAL_TYPE_CARDINAL,
        status));
    QStringList categories;
    if (U_FAILURE(status) != 0)
        return categories;
    const std::unique_ptr<icu::StringEnumeration> keywords(rules->getKeywords(status));
    while (U_SUCCESS(status) != 0) {
        const icu::UnicodeString* keyword = keywords->snext(status);
        if (keyword == nullptr)
            break;
        categories.append(Icu::toQt(*keyword));
    }
    categories.sort();
    return categories;
}
