#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/**
 * The text of a file in UTF-8, with or without a mark, or in UTF-16 with one, as spreadsheets write
 * it; nothing when it is neither.
 */
std::optional<QString> decodeUtf(const QByteArray& bytes);
