#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/**
 * Path of the first key that stands twice in one object of a JSON text, joined with "/", an
 * empty one as two quotation marks; empty when there is none. A parsed document knows only the last
 * of them.
 *
 * Nothing when the text cannot be followed to its end: the parser used here is stricter than Qt's.
 */
std::optional<QString> findRepeatedKey(const QByteArray& json);
