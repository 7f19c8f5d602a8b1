#pragma once

#include "Finding.h"

#include <QString>
#include <QVector>

/** One text as it travels to a translator and back. */
struct ExchangeUnit {
    enum class State {
        Unknown,    ///< the file does not tell
        Missing,    ///< has no text yet
        Translated, ///< its text is of the base text beside it
        Stale,      ///< its text is of an older base text, or somebody is to look at it again
    };

    QString url;
    bool isShort = false; ///< a short text, and not the full one
    QString baseText;
    bool isBaseTextKnown = true; ///< false where the file has no place for it
    QString text;
    QString comment;
    QString fullBaseText;     ///< of a short text that is written, the full one beside it
    QString fullText;         ///< the same in the language
    QString previousBaseText; ///< what a stale text is of; empty when that is not known
    State state = State::Unknown;
    Place place; ///< in the file that was read
};
Q_DECLARE_TYPEINFO(ExchangeUnit, Q_MOVABLE_TYPE);

/** Something in a file that cannot be used, and why. */
struct ExchangeFault {
    Place place;
    QString reason; ///< a sentence
};

/** What a file for translators holds: some texts of one language, beside those of the base. */
struct ExchangeFile {
    /** Keys of the languages. One that was read may be written in another way, as de-DE, or empty:
     * see isSameLanguage(). */
    QString baseLanguage;
    QString language;
    QVector<ExchangeUnit> units;
    QVector<ExchangeFault> unusable; ///< what was read and is no unit
};
