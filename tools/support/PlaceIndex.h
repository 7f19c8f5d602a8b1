#pragma once

#include "Place.h"

#include <QByteArray>

#include <vector>

/**
 * Tells the line and the column of a byte of a UTF-8 text, however long its lines are.
 *
 * Lines end with "\n", "\r\n" or a "\r" alone. A byte order mark at the beginning is no character.
 */
class PlaceIndex
{
public:
    PlaceIndex() = default;
    explicit PlaceIndex(const QByteArray& text);

    /** Place of the byte at @p offset of the text that the index was made of. */
    Place placeOf(const QByteArray& text, int offset) const;

private:
    std::vector<Place> m_Marks; ///< the place of the first byte of each stretch of the text
};
