#include "PlainWalk.h"

#include <QJsonArray>
#include <QJsonDocument>

QJsonValue PlainWalk::parse(QByteArray bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes.replace("\r", ""), &error);
    if (error.error != QJsonParseError::NoError)
        return QJsonValue::Undefined;
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

QJsonValue PlainWalk::read(const QStringList& keys, const QJsonObject& level, int from)
{
    const QJsonValue value = level.value(keys.at(from));
    const int rest = keys.size() - from - 1;
    if (rest == 0)
        return value;
    if (!value.isObject())
        return QJsonValue::Undefined;
    const QJsonObject node = value.toObject();
    const bool goesIntoContainer = rest > 1 && node.contains("childs");
    return read(keys, goesIntoContainer ? node.value("childs").toObject() : node, from + 1);
}

QJsonValue PlainWalk::readMember(const QString& url, const QString& name,
                                 const QJsonObject& document)
{
    return read((url + '/' + name).split('/'), document.value("Content").toObject());
}

QStringList PlainWalk::urls(const QJsonValue& value, const QString& storagePath)
{
    QStringList found;
    const QJsonObject object = value.toObject();
    for (const QString& key : object.keys()) {
        const QJsonValue child = object.value(key);
        const QString path = storagePath.isEmpty() ? key : storagePath + '/' + key;
        if (child["text"].isString() && child["comment"].isString())
            found.append(QString(path).remove("/childs"));
        found += urls(child, path);
    }
    return found;
}

TextManagerDefinitions::SetReturnValue
PlainWalk::write(const QStringList& keys, const QJsonValue& value, QJsonObject& level, int from)
{
    const QString& key = keys.at(from);
    const QJsonValue member = level.value(key);
    const bool isNew = member.isUndefined();
    if (from + 1 == keys.size()) {
        if (!isNew && member.type() != value.type())
            return TextManagerDefinitions::Error;
        level.insert(key, value);
        return TextManagerDefinitions::Success;
    }
    if (!isNew && !member.isObject())
        return TextManagerDefinitions::Error;
    QJsonObject child = isNew ? value.toObject() : member.toObject();
    const auto result = write(keys, value, child, from + 1);
    level.insert(key, child);
    return result;
}
