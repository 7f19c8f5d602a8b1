#include "TextKey.h"

#include <QRandomGenerator>
#include <QSet>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <algorithm>

TextKeyHash qHash(const TextKey& key, TextKeyHash seed)
{
    static const quint64 secret = QRandomGenerator::system()->generate64();
    const std::size_t byteCount = static_cast<std::size_t>(key.size()) * sizeof(QChar);
    return static_cast<TextKeyHash>(
        XXH3_64bits_withSeed(key.constData(), byteCount, secret + seed));
}

void removeRepeated(QStringList& texts)
{
    QSet<TextKey> seen;
    const auto isRepeated = [&seen](const QString& text) {
        const auto countBefore = seen.size();
        seen.insert(text);
        return seen.size() == countBefore;
    };
    texts.erase(std::remove_if(texts.begin(), texts.end(), isRepeated), texts.end());
}
