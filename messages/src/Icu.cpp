#include "Icu.h"

#include <LanguageDefinitions.h>

namespace
{

QString meaning(UErrorCode code)
{
    switch (code) {
    case U_UNMATCHED_BRACES:
        return QStringLiteral("a brace without its partner");
    case U_DEFAULT_KEYWORD_MISSING:
        return QStringLiteral("no form 'other'");
    case U_PATTERN_SYNTAX_ERROR:
        return QStringLiteral("not the syntax of an argument");
    case U_INDEX_OUTOFBOUNDS_ERROR:
        return QStringLiteral("too long or too large");
    case U_ILLEGAL_ARGUMENT_ERROR:
        return QStringLiteral("an unknown or unfit type");
    default:
        return QStringLiteral("not the format of a number, date or time");
    }
}

} // namespace

icu::Locale Icu::localeOf(const QString& languageKey)
{
    // ICU would take "POSIX" for a language without rules.
    if (languageKey.isEmpty() ||
        languageKey == LanguageDefinitions::getSecondFallbackLanguageFilename())
        return icu::Locale("en_US_POSIX");
    const icu::Locale locale = icu::Locale::createCanonical(languageKey.toUtf8().constData());
    return locale.isBogus() ? icu::Locale::getRoot() : locale;
}

QString Icu::describe(UErrorCode code)
{
    return QStringLiteral("%1 (%2)").arg(meaning(code), QLatin1String(u_errorName(code)));
}
