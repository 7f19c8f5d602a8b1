#pragma once

#include <QString>

#include <unicode/locid.h>
#include <unicode/unistr.h>

/** What stands between the strings of Qt and ICU, which are both of UTF-16. */
namespace Icu
{

/** Shares the characters of @p text, which has to live longer. */
inline icu::UnicodeString view(const QString& text)
{
    return icu::UnicodeString(false, reinterpret_cast<const char16_t*>(text.utf16()),
                              static_cast<int32_t>(text.size()));
}

/** Not QString::fromUtf16(), which takes a first U+FEFF for a mark of the byte order. */
inline QString toQt(const icu::UnicodeString& text)
{
    return QString(reinterpret_cast<const QChar*>(text.getBuffer()), text.length());
}

/** The rules for a language key; "POSIX" and the empty key have those of en_US_POSIX. */
icu::Locale localeOf(const QString& languageKey);

/** What an error code means for a message, in words and with ICU's own name for it. */
QString describe(UErrorCode code);

} // namespace Icu
