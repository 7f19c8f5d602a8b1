#include "JsonParser.h"

#include <nlohmann/json.hpp>

#include <algorithm>

QString JsonFault::in(const QString& name) const
{
    return QStringLiteral("%1:%2:%3: %4").arg(name).arg(line).arg(column).arg(reason);
}

JsonFault describeMalformedJson(const QByteArray& bytes, const QJsonParseError& qtError)
{
    QString reason = qtError.errorString();
    int offset = qtError.offset - 1; // Qt's is behind the character that it refused
    try {
        const auto parsed = nlohmann::json::parse(bytes.cbegin(), bytes.cend());
        if (!parsed.is_structured())
            reason = QStringLiteral("found a %1").arg(QLatin1String(parsed.type_name()));
    } catch (const nlohmann::json::parse_error& error) {
        // "[json.exception...] parse error at line L, column C: what was found and expected"
        reason = QString::fromUtf8(error.what()).section(QStringLiteral(": "), 1);
        offset = static_cast<int>(error.byte) - 1;
    } catch (const nlohmann::json::exception& error) {
        // A number out of range, for one: no place is told but by Qt.
        reason = QString::fromUtf8(error.what()).section(QStringLiteral("] "), 1);
    }
    const QByteArray before = bytes.left(std::clamp(offset, 0, bytes.size()));
    const int lineStart = before.lastIndexOf('\n') + 1;
    return {before.count('\n') + 1, QString::fromUtf8(before.mid(lineStart)).size() + 1,
            QStringLiteral("malformed JSON: %1").arg(reason)};
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
