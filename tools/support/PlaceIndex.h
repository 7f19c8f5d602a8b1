#pragma once

#include "Place.h"

#include <QByteArray>

#include <vector>

/**
 * Tells the line and the column of a byte of a UTF-8 text, however long its lines are.
 *
 * Lines end with "\n", "\r\n" or a "\r" alone. A byte order mark at the beginning is no character.
 *
 * The index is made when it is asked for the first time: not by two threads at once.
 */
class PlaceIndex
{
public:
    /** Place of the byte at @p offset. @param text the same at every call. */
    Place placeOf(const QByteArray& text, int offset) const;

private:
    void make(const QByteArray& text) const;

    mutable std::vector<Place> m_Marks; ///< the place of the first byte of each stretch of the text
};
