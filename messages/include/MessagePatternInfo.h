#pragma once

#include "TextManagerMessagesExport.h"

#include <QString>
#include <QStringList>
#include <QVector>

/** One place of a message pattern that chooses among forms by a number. */
struct MessagePlural {
    QString argument;       ///< name of the number's argument
    QStringList categories; ///< as written: "one", "other"; "=0" for an exact number
    bool isOrdinal = false; ///< whether it speaks of an order (1st, 2nd), not of an amount
    int offset = 0;         ///< of the brace that opens it, in UTF-16 units
};

/**
 * What is in the pattern of an ICU message, for whoever checks texts. A value without a lock and
 * without a language: the pattern is looked at once, when the object is made. Nothing is logged.
 */
class TEXTMANAGERMESSAGES_EXPORT MessagePatternInfo
{
public:
    /** Looks at @p pattern. */
    explicit MessagePatternInfo(const QString& pattern);

    /** Whether TextMessages can format the pattern, given arguments that fit. */
    bool isValid() const { return m_StrError.isEmpty(); }
    /** What is wrong, in words for who writes texts; empty for a valid pattern. */
    QString getError() const { return m_StrError; }
    /** Where the fault is seen, in UTF-16 units from the start; -1 for a valid pattern. */
    int getErrorOffset() const { return m_ErrorOffset; }

    /** Names of all arguments, nested ones too: ascending, each once, numbers as they are written.
     * Of a pattern that is not valid, those that were read before the fault. */
    QStringList getArguments() const { return m_Arguments; }
    /** All plural and ordinal choices, nested ones too, in the order of the pattern; empty for one
     * that is not valid. */
    QVector<MessagePlural> getPlurals() const { return m_Plurals; }

    /**
     * The categories that CLDR gives a language, ascending: "few", "many", "one", "other" ...
     *
     * @param isOrdinal whether those of an order are wanted, not those of an amount.
     */
    static QStringList getPluralCategories(const QString& languageKey, bool isOrdinal);

private:
    QString m_StrError;
    int m_ErrorOffset = -1;
    QStringList m_Arguments;
    QVector<MessagePlural> m_Plurals;
};
