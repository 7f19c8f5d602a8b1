#pragma once

#include <QString>

/**
 * Offset of the first character that nobody sees and that does nothing where it stands; -1 when
 * there is none.
 *
 * Right are: joiners beside the letters of scripts that join (Arabic, those of India, ...) and
 * between emoji, U+200B in Khmer, Thai, Lao and Burmese, marks of direction in texts with letters
 * from right to left, and a soft hyphen within a word.
 */
QString::size_type findWrongInvisibleCharacter(const QString& text);
