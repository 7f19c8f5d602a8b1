#include "LanguageInformation.h"

#include "LanguageDefinitions.h"
#include "LanguageInformation_p.h"

#include <QDebug>
#include <QStringView>

namespace
{

thread_local unsigned warningCount = 0;

/** Where the key that starts at @p keyStart ends: at the next separator or with the URL. */
int endOfKey(const QString& textUrl, int keyStart)
{
    const int separator = textUrl.indexOf(QLatin1Char('/'), keyStart);
    return separator < 0 ? textUrl.size() : separator;
}

/**
 * Takes an object out of its parent, leaving null in its place.
 *
 * JSON objects are shared until they are changed: changed while its parent still holds it, the
 * object would be copied with all its members. QJsonObject::take() would not do: it moves every
 * later sibling up, and storing the object again moves them back.
 */
QJsonObject takeObject(QJsonValueRef member)
{
    QJsonObject object = member.toObject();
    member = QJsonValue();
    return object;
}

QJsonObject builtAnew(const QJsonObject& object)
{
    QJsonObject copy;
    for (auto member = object.constBegin(); member != object.constEnd(); ++member)
        copy.insert(member.key(), member.value());
    return copy;
}

/** Replaces the member @p key by a value of its own type. */
TextManagerDefinitions::SetReturnValue replaceMember(QStringView key, const QJsonValue& value,
                                                     QJsonObject& object)
{
    if (object.value(key).type() != value.type())
        return TextManagerDefinitions::Error;
    // An object keeps the bytes of every string that was ever replaced in it. A node is small, so
    // it is built anew; otherwise a text that is rewritten for months would fill the memory.
    constexpr int mostMembersOfANode = 16;
    if (object.size() <= mostMembersOfANode)
        object = builtAnew(object);
    object.find(key).value() = value;
    return TextManagerDefinitions::Success;
}

/** Writes @p value at the part of @p path that begins at @p keyStart. */
TextManagerDefinitions::SetReturnValue writeValue(const QString& path, int keyStart,
                                                  const QJsonValue& value, QJsonObject& object)
{
    const int keyEnd = endOfKey(path, keyStart);
    const QStringView key = QStringView(path).mid(keyStart, keyEnd - keyStart);
    const bool isLeaf = keyEnd == path.size();

    if (!object.contains(key)) {
        if (isLeaf) {
            object.insert(key, value);
            return TextManagerDefinitions::Success;
        }
        QJsonObject child = value.toObject();
        const auto result = writeValue(path, keyEnd + 1, value, child);
        object.insert(key, child);
        return result;
    }

    if (isLeaf)
        return replaceMember(key, value, object);
    QJsonValueRef member = object.find(key).value();
    if (!member.isObject()) {
        qWarning() << "Unable to find jsonObject for url:" << path.mid(keyStart);
        return TextManagerDefinitions::Error;
    }
    QJsonObject child = takeObject(member);
    const auto result = writeValue(path, keyEnd + 1, value, child);
    member = child;
    return result;
}

QString urlFromStoragePath(QString storagePath)
{
    static const QString childLevel =
        LanguageDefinitions::getUrlSeparator() + LanguageDefinitions::getJsonChildsKey();
    return storagePath.remove(childLevel);
}

} // namespace

unsigned LanguageInformationWarnings::countInThisThread()
{
    return warningCount;
}

LanguageInformation::~LanguageInformation() = default;

bool LanguageInformation::checkIfPropertyExists(const QJsonObject& jsonObject,
                                                const QString& key) const
{
    return jsonObject.value(key).isString();
}

bool LanguageInformation::checkIfTextAndCommentExists(const QJsonValue& jsonValue) const
{
    const QJsonObject node = jsonValue.toObject();
    return checkIfPropertyExists(node, LanguageDefinitions::getJsonTextName()) &&
           checkIfPropertyExists(node, LanguageDefinitions::getJsonCommentName());
}

bool LanguageInformation::hasChildKey(const QJsonObject& jsonObject) const
{
    return jsonObject.contains(LanguageDefinitions::getJsonChildsKey());
}

bool LanguageInformation::readJsonValue(const QString& textUrl, const QJsonObject& jsonObject,
                                        QJsonValue& jsonValue) const
{
    // Keys are cut out of the URL one by one instead of splitting it: look-ups are frequent, and
    // this way none of them allocates.
    QJsonObject level = jsonObject;
    int keyStart = 0;
    for (;;) {
        const int keyEnd = endOfKey(textUrl, keyStart);
        const QJsonValue value = level.value(QStringView(textUrl).mid(keyStart, keyEnd - keyStart));
        if (value.isUndefined())
            return false;
        const bool isLastKey = keyEnd == textUrl.size();
        if (isLastKey) {
            jsonValue = value;
            return true;
        }
        if (!value.isObject()) {
            ++warningCount;
            qWarning() << "Unable to find jsonObject for url:" << textUrl.mid(keyStart);
            return false;
        }
        keyStart = keyEnd + 1;
        level = value.toObject();
        const bool isMemberName = endOfKey(textUrl, keyStart) == textUrl.size();
        if (!isMemberName && hasChildKey(level))
            level = level.value(LanguageDefinitions::getJsonChildsKey()).toObject();
    }
}

bool LanguageInformation::readStringValueFromJson(const QString& textUrl, bool& ok,
                                                  const QJsonObject& jsonObject,
                                                  QString& result) const
{
    QJsonValue value;
    ok = readJsonValue(textUrl, jsonObject, value);
    if (!ok)
        return false;
    if (!value.isString()) {
        ++warningCount;
        qWarning() << "Invalid data type of jsonValue for url:" << textUrl;
        return false;
    }
    result = value.toString();
    return true;
}

QString LanguageInformation::getObject(const QString& textUrl, bool& ok,
                                       const QJsonObject& jsonObject, const QString& objectName,
                                       const QString& propertyName) const
{
    QString url = textUrl;
    if (!propertyName.isEmpty())
        url += LanguageDefinitions::getUrlSeparator() + propertyName;
    QString result;
    readStringValueFromJson(url, ok, jsonObject.value(objectName).toObject(), result);
    return result;
}

QPair<QString, QString>
LanguageInformation::getLanguageHeaderInfo(const QJsonObject& jsonObject) const
{
    const QJsonObject header =
        jsonObject.value(LanguageDefinitions::getJsonHeaderName()).toObject();
    QPair<QString, QString> info;
    bool ok = false;
    readStringValueFromJson(LanguageDefinitions::getJsonHeaderLanguageKey(), ok, header,
                            info.first);
    readStringValueFromJson(LanguageDefinitions::getJsonHeaderSubLanguageKey(), ok, header,
                            info.second);
    return info;
}

QStringList LanguageInformation::getAvailableUrls(const QJsonObject& jsonObject) const
{
    QStringList urls;
    collectUrls(jsonObject.value(LanguageDefinitions::getJsonContentName()), QString(), urls);
    return urls;
}

void LanguageInformation::collectUrls(const QJsonValue& jsonValue, const QString& prefix,
                                      QStringList& urls) const
{
    const QJsonObject object = jsonValue.toObject();
    const QString start =
        prefix.isEmpty() ? prefix : prefix + LanguageDefinitions::getUrlSeparator();
    for (auto member = object.constBegin(); member != object.constEnd(); ++member) {
        const QJsonValue child = member.value();
        if (!child.isObject())
            continue;
        const QString path = start + member.key();
        if (checkIfTextAndCommentExists(child))
            urls.append(urlFromStoragePath(path));
        collectUrls(child, path, urls);
    }
}

TextManagerDefinitions::SetReturnValue
LanguageInformation::setJsonValue(const QString& textUrl, const QJsonValue& jsonValue,
                                  QJsonObject& jsonObject)
{
    return writeValue(textUrl, 0, jsonValue, jsonObject);
}
