#pragma once

#include <QByteArray>
#include <QJsonObject>

/** What becomes of the comments for translators in a packed file. */
enum class PackedComments {
    Kept,
    Blank,   ///< empty: their URLs are still listed
    Dropped, ///< left out: their URLs are no longer listed
};

/** A language document as it goes to a device: in one line, its keys in ascending order. */
QByteArray packed(const QJsonObject& document, PackedComments comments);
