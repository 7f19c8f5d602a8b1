#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <QString>

#include <optional>

/** Where a text is no JSON, and why. */
struct JsonFault {
    int line = 1;   ///< from 1
    int column = 1; ///< in characters, from 1
    QString reason; ///< "malformed JSON: " and what was found and expected; no full stop

    /** "name:line:column: reason" for the text of that name. */
    QString in(const QString& name) const;
};

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
