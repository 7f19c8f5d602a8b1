#pragma once

#include "JsonTree.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <QString>

#include <optional>

/**
 * Parses as Qt does and explains what Qt refuses.
 *
 * @param document receives what was parsed; unchanged after a fault.
 */
std::optional<JsonFault> parseJson(const QByteArray& bytes, QJsonDocument& document);

/**
 * What is wrong with a text that Qt's parser refused with @p qtError. Its errors say little more
 * than that there is one, so a parser that names what it found and what it expected is asked first.
 */
JsonFault describeMalformedJson(const QByteArray& bytes, const QJsonParseError& qtError);

/** What a value is, in words: "an object", "null". */
QString nameOfType(const QJsonValue& value);
