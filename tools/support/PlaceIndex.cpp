#include "PlaceIndex.h"

#include <algorithm>

namespace
{

constexpr int stretchInBytes = 1024;

/** Moves a place over the byte at @p offset. */
void passByte(const QByteArray& text, int offset, Place& place)
{
    const auto byte = static_cast<unsigned char>(text.at(offset));
    const bool isLineEnd =
        byte == '\n' ||
        (byte == '\r' && (offset + 1 == text.size() || text.at(offset + 1) != '\n'));
    const bool goesOnInNextByte = offset + 1 < text.size() && (text.at(offset + 1) & 0xC0) == 0x80;
    if (isLineEnd)
        place = {place.line + 1, 1};
    else if (!goesOnInNextByte)
        ++place.column;
}

} // namespace

PlaceIndex::PlaceIndex(const QByteArray& text)
{
    m_Marks.reserve(static_cast<std::size_t>(text.size() / stretchInBytes + 1));
    Place place{1, text.startsWith("\xEF\xBB\xBF") ? 0 : 1};
    for (int offset = 0; offset < text.size(); ++offset) {
        if (offset % stretchInBytes == 0)
            m_Marks.push_back(place);
        passByte(text, offset, place);
    }
}

Place PlaceIndex::placeOf(const QByteArray& text, int offset) const
{
    if (m_Marks.empty())
        return {1, 1};
    const int end = std::clamp(offset, 0, text.size());
    const auto stretch =
        std::min(static_cast<std::size_t>(end / stretchInBytes), m_Marks.size() - 1);
    Place place = m_Marks[stretch];
    for (int passed = static_cast<int>(stretch) * stretchInBytes; passed < end; ++passed)
        passByte(text, passed, place);
    return place;
}
