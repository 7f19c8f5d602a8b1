#include "TextHash_p.h"

#include <QRandomGenerator>

#define XXH_INLINE_ALL
#include <xxhash.h>

TextHash::TextHash()
    : m_Secret(QRandomGenerator::system()->generate64())
{
}

quint64 TextHash::ofText(const QString& text, quint64 seed)
{
    const std::size_t byteCount = static_cast<std::size_t>(text.size()) * sizeof(QChar);
    return XXH3_64bits_withSeed(text.constData(), byteCount, seed);
}
