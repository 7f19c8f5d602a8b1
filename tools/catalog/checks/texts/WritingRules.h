#pragma once

#include <QString>

/** How a language is written, as far as the checks ask. Made from a language key such as de_DE. */
class WritingRules
{
public:
    explicit WritingRules(const QString& languageKey);

    QString key() const { return m_StrKey; }
    /** Whether both are the same language, perhaps in two varieties, as en_GB and en_US. */
    bool isVarietyOf(const WritingRules& other) const;
    /** Whether it is no people's language, but the texts for want of one. */
    bool isPosix() const { return m_IsPosix; }

    /** Whether a sentence must end with a full stop, which some languages leave out or do not know.
     * POSIX is terse. */
    bool needsFullStops() const { return m_NeedsFullStops; }
    /** Whether words stand without blanks between them. */
    bool hasBlanks() const { return m_HasBlanks; }
    /** Whether @p word is said twice without being a slip, as "vous vous" is in French. */
    bool mayDouble(const QString& word) const;

    /** What a text ends with, whatever its script. */
    enum class EndMark {
        None,
        Dot, ///< that may be an abbreviation's: "U.S.", "max.", "Außentemp."
        FullStop,
        Question,
        Exclamation,
        Colon,
        Ellipsis
    };
    /** The mark that @p text ends with; quotation marks, brackets and tags behind it do not count.
     */
    EndMark endMarkOf(const QString& text) const;

    /** How a reason calls a mark. */
    static QString nameOf(EndMark mark);

private:
    EndMark markAt(const QString& text, QString::size_type offset) const;

    QString m_StrKey;
    QString m_StrLanguage; ///< the key without country and variety: "de"
    bool m_IsPosix = false;
    bool m_NeedsFullStops = true;
    bool m_HasBlanks = true;
    bool m_DoublesWords = false;
};
