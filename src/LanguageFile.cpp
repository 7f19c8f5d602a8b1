#include "LanguageFile_p.h"

#include <QJsonDocument>
#include <QJsonParseError>

#define XXH_INLINE_ALL
#include <xxhash.h>
static_assert(XXH_VERSION_NUMBER >= 800, "xxHash 0.8 is needed: older ones know no XXH3");

#include <algorithm>
#include <cstring>
#include <iterator>

LanguageFile::Digest LanguageFile::digestOf(const QByteArray& bytes)
{
    XXH128_canonical_t canonical;
    XXH128_canonicalFromHash(
        &canonical, XXH3_128bits(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    Digest digest;
    std::copy(std::begin(canonical.digest), std::end(canonical.digest), digest.hash.begin());
    digest.size = bytes.size();
    return digest;
}

std::optional<QJsonObject> LanguageFile::parse(QByteArray bytes)
{
    // What QIODevice::Text does. It takes longer to find that there is nothing to do, and so does
    // QByteArray::contains().
    if (std::memchr(bytes.constData(), '\r', static_cast<std::size_t>(bytes.size())) != nullptr)
        bytes.replace('\r', QByteArray());
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        return std::nullopt;
    return document.object();
}
