#pragma once

#include "TextManagerMessagesExport.h"

#include <QString>
#include <QVariantMap>

class TextManagerBase;

/**
 * Texts with arguments: reads a text of a text manager as an ICU message and fills in numbers,
 * strings and dates, with the plural forms, digits and formats of the text's own language.
 *
 *     {days, plural, one {Filter change due in one day} other {Filter change due in # days}}
 *
 * A text is a message only where it is asked for here; look-ups of the text manager hand it out as
 * it stands.
 *
 * **Arguments.** Every argument that a pattern names has to be there, also where the form that is
 * chosen does not show it; those that it does not name are ignored, so that a translation may leave
 * one out. A value is a number, a string, a QDate, a QTime, a QDateTime, or whatever else QVariant
 * makes a string of. Dates are shown in the time zone of the process.
 *
 * **Language.** The rules are those of the language whose text answers, also after a fallback. The
 * rules of "POSIX" are those of `en_US_POSIX`: English without grouping of digits. A language that
 * ICU does not know has the rules of its root: one form for all numbers.
 *
 * **Failure.** A pattern that is malformed, an argument that is missing or that its place cannot
 * show: the text as it stands, and one warning each time, "Unable to format message" with the text
 * URL and the reason. Nothing throws.
 *
 * **Threads.** The const operations may be called from several threads, as those of the text
 * manager may. Compiled patterns are remembered for the whole process behind one mutex, which is
 * held while a message is formatted: that takes some microseconds, or some twenty for a pattern
 * that is new. The ones used last are kept, at most 128 and together 64,000 characters.
 *
 * **Ownership.** The text manager stays the caller's and must outlive this object.
 */
class TEXTMANAGERMESSAGES_EXPORT TextMessages
{
public:
    /** Reads its texts from @p textManager. */
    explicit TextMessages(const TextManagerBase& textManager);

    /**
     * The message at @p textUrl, with the fallback of TextManagerBase::getText().
     *
     * @param languageKey the wanted language; empty stands for the text manager's current one.
     * @return the message; empty, without a warning, when no language has a text.
     */
    QString getMessage(const QString& textUrl, const QVariantMap& arguments,
                       const QString& languageKey) const;

    /**
     * A pattern that comes from elsewhere, in the rules of @p languageKey; of "POSIX" when that is
     * empty. Where a warning names the URL of a text, it names the pattern.
     */
    static QString formatPattern(const QString& pattern, const QVariantMap& arguments,
                                 const QString& languageKey);

private:
    const TextManagerBase& m_TextManager; ///< not owned
};
