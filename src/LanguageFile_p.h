#pragma once

#include "FileStamp_p.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <array>
#include <optional>

/** A language file as it was read last. It holds no bytes of the file. */
struct LanguageFile {
    /** What tells bytes apart without keeping them. */
    struct Digest {
        std::array<unsigned char, 16> hash{};
        QByteArray::size_type size = 0;
        bool operator==(const Digest& other) const
        {
            return size == other.size && hash == other.hash;
        }
    };

    static Digest digestOf(const QByteArray& bytes);
    /** The top-level object, as of a file that is opened as text; nothing when it is no JSON. */
    static std::optional<QJsonObject> parse(QByteArray bytes);

    std::optional<FileStamp> stamp; ///< unchanged with it; without it only the bytes can tell
    Digest digest;
    std::optional<QJsonObject> document; ///< nothing when it is no JSON
};
