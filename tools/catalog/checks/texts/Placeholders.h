#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/** A part of a text in whose place a program puts a value. */
struct Placeholder {
    enum class Kind {
        Numbered,       ///< of Qt: %1, %L1
        Count,          ///< of Qt: %n, %Ln
        Printf,         ///< takes the values in their order: %s, %5.2f
        PrintfNumbered, ///< %1$s
        Named           ///< {name}, {0}, and the arguments of messages: {count, plural, ...}
    };

    Kind kind = Kind::Numbered;
    QString name; ///< tells what value it takes: "%1" for "%L1", "%d" for "%5d"
    QString::size_type offset = 0;
    QString::size_type length = 0; ///< of a plural or a choice: to the end of that word
};

/** In what the placeholders of a text differ from those of the base. */
struct PlaceholderDifference {
    QStringList missing;
    QStringList superfluous;
    bool isOrderOther = false;     ///< the same ones, but values would land in the wrong places
    QString::size_type offset = 0; ///< of the first superfluous one; 0 when there is none

    bool isNone() const { return missing.isEmpty() && superfluous.isEmpty() && !isOrderOther; }
};

/**
 * The placeholders of one text.
 *
 * A percent sign that stands for itself makes none: "50 %", "%%", "100 % dans", "50%off". Digits
 * before a conversion are its width ("%5d"), unless the text has a "%1", as texts for Qt do
 * ("%1d %2h").
 */
class Placeholders
{
public:
    /**
     * @param base those of the text that this one translates; null when it translates none. "%50"
     * is no placeholder where the base has "50%": Turkish writes it so.
     */
    explicit Placeholders(const QString& text, const Placeholders* base = nullptr);

    /** In the order of the text, those with a percent sign first. */
    const QVector<Placeholder>& all() const { return m_All; }
    bool has(Placeholder::Kind kind) const;
    /** Whether the text is a message with plurals, choices or formats. Of simple braces alone,
     * others than messages may make something. */
    bool areOfMessage() const { return m_AreOfMessage; }
    /** Whether the character at @p offset belongs to one. */
    bool covers(QString::size_type offset) const;

    /**
     * Nothing when a program fills the text as it does the base. Numbered and named ones may change
     * their order and stand several times; those of printf may get numbers in a translation.
     */
    PlaceholderDifference compareWithBase(const Placeholders& base) const;

private:
    void findPercentForms(const QString& text, const QStringList& percentagesOfBase);
    void findBraceForms(const QString& text);
    QStringList namesOf(bool isPrintf) const;
    QString::size_type offsetOf(const QString& name) const;

    QVector<Placeholder> m_All;
    bool m_AreOfMessage = false;
    QStringList m_Percentages; ///< "50" for "50%" and "50 %"
};
