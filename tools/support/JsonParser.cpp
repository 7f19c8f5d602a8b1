#include "JsonParser.h"

JsonFault describeMalformedJson(const QByteArray& bytes, const QJsonParseError& qtError)
{
    const JsonTree tree(bytes);
    if (tree.fault())
        return *tree.fault();
    const int offset = qtError.offset - 1; // Qt's is behind the character that it refused
    const Place place = tree.placeOf(offset);
    return {place.line, place.column, QStringLiteral("malformed JSON: ") + qtError.errorString()};
}

std::optional<JsonFault> parseJson(const QByteArray& bytes, QJsonDocument& document)
{
    QJsonParseError error;
    const QJsonDocument parsed = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        return describeMalformedJson(bytes, error);
    document = parsed;
    return std::nullopt;
}

QString nameOfType(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Object:
        return QStringLiteral("an object");
    case QJsonValue::Array:
        return QStringLiteral("an array");
    case QJsonValue::String:
        return QStringLiteral("a text");
    case QJsonValue::Double:
        return QStringLiteral("a number");
    case QJsonValue::Bool:
        return QStringLiteral("a truth value");
    case QJsonValue::Null:
        return QStringLiteral("null");
    case QJsonValue::Undefined:
        break;
    }
    return QStringLiteral("nothing");
}
