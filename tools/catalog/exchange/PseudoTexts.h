#pragma once

#include <QString>
#include <QStringList>

// Texts that show on the device what a translator cannot see. Placeholders and markup stay, and of
// messages the words that are not shown.

/** The text with accents, two fifths longer at least, between brackets that show whether all of it
 * is seen. */
QString accentuate(const QString& text);

/** How many columns the widest line of the text takes, where characters of East Asia take two. */
int widthOf(const QString& text);

/** The text written from right to left, whatever its script. */
QString turnRightToLeft(const QString& text);
