#pragma once

#include <QJsonValue>
#include <QString>
#include <QVariant>

/**
 * Why the bus cannot carry a value of JSON: a null inside of it, a text with U+0000 or half a
 * surrogate pair, more levels than the bus permits.
 *
 * @param where the value's own place, which the answer begins with.
 * @return empty when it can.
 */
QString findObstacleOnBus(const QJsonValue& value, const QString& where);

/** A value of Qt's own types as JSON keeps it; undefined when it does not: NaN, infinity, integers
 * of more than 53 bits, and types that JSON does not know. */
QJsonValue toJson(const QVariant& value);
