#include "PlaceIndex.h"

#include <algorithm>

namespace
{

constexpr int stretchInBytes = 1024;

bool isLineEnd(char byte, char next)
{
    return byte == '\n' || (byte == '\r' && next != '\n');
}

bool isInsideOfCharacter(char byte)
{
    return (byte & 0xC0) == 0x80;
}

/** Moves a place from one offset of a text to a later one. */
Place advance(Place place, const QByteArray& text, int from, int to)
{
    const char* const bytes = text.constData(); // a NUL follows them
    for (int offset = from; offset < to; ++offset) {
        if (isLineEnd(bytes[offset], bytes[offset + 1]))
            place = {place.line + 1, 1};
        else
            place.column += isInsideOfCharacter(bytes[offset + 1]) ? 0 : 1;
    }
    return place;
}

} // namespace

Place PlaceIndex::placeOf(const QByteArray& text, int offset) const
{
    if (m_Marks.empty())
        make(text);
    const int end = std::clamp(offset, 0, static_cast<int>(text.size()));
    const int stretch = end / stretchInBytes;
    Place place =
        advance(m_Marks[static_cast<std::size_t>(stretch)], text, stretch * stretchInBytes, end);
    // What is no UTF-8 right behind a byte order mark is a part of no character but the mark.
    place.column = std::max(place.column, 1);
    return place;
}

void PlaceIndex::make(const QByteArray& text) const
{
    Place place{1, text.startsWith("\xEF\xBB\xBF") ? 0 : 1};
    const int size = static_cast<int>(text.size());
    for (int stretch = 0; stretch <= size; stretch += stretchInBytes) {
        m_Marks.push_back(place);
        place = advance(place, text, stretch, std::min(stretch + stretchInBytes, size));
    }
}
