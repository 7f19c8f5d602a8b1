#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>
#include <QVariantMap>

/** @p map as a JSON object in one line without blanks, the form that the library hands out. */
inline QString toCompactJson(const QVariantMap& map)
{
    // Bytes that are null make a null string, and a zero byte would end it: QString does both.
    return QString::fromUtf8(
        QJsonDocument(QJsonObject::fromVariantMap(map)).toJson(QJsonDocument::Compact));
}
