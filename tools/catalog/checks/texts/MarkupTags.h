#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/**
 * The tags of one text: those of HTML, and others that are closed, as <link>here</link> is.
 * "<Enter>" alone, "a < b" and "<5 °C" are no tags.
 */
class MarkupTags
{
public:
    explicit MarkupTags(const QString& text);

    /** Whether the character at @p offset belongs to a tag, or to a name of a character: &amp; */
    bool covers(QString::size_type offset) const;

    /** What is wrong with the tags, or other than in the base. */
    struct Fault {
        QString reason; ///< empty when nothing is wrong
        QString::size_type offset = 0;
    };
    /** A tag that is opened and not closed, or closed and not opened. */
    Fault findUnbalanced() const;
    /** A tag that is not there as often as in @p base. */
    Fault compareWithBase(const MarkupTags& base) const;

private:
    struct Tag {
        QString name; ///< in lower case
        bool isClosing = false;
        bool isWhole = false; ///< needs no closing one
        QString::size_type offset = 0;
        QString::size_type length = 0;

        QString toString() const;
    };
    void findTags(const QString& text);
    void findCharacterNames(const QString& text);
    bool isMarkup(const QString& name) const;

    struct CharacterName {
        QString::size_type offset = 0;
        QString::size_type length = 0;
    };
    QVector<Tag> m_Candidates;
    QVector<CharacterName> m_CharacterNames;
};
