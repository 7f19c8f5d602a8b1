#include "LanguageInformation.h"

#include "JsonMember_p.h"
#include "LanguageDefinitions.h"
#include "LanguageInformation_p.h"

#include <QDebug>
#include <QStringView>

#include <optional>
#include <utility>
#include <vector>

namespace
{

thread_local unsigned warningCount = 0;

/** Where the key that starts at @p keyStart ends: at the next separator or with the URL. */
QString::size_type endOfKey(const QString& textUrl, QString::size_type keyStart)
{
    const auto separator = textUrl.indexOf(QLatin1Char('/'), keyStart);
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

/** What a path goes on in below @p key: the object there, taken out, or a new one that begins as
 * @p value. Nothing, when what is there is no object. */
std::optional<QJsonObject> takeChild(QJsonObject& object, QStringView key, const QJsonValue& value)
{
    if (!object.contains(key))
        return value.toObject();
    const QJsonValueRef member = object.find(key).value();
    if (!member.isObject())
        return std::nullopt;
    return takeObject(member);
}

/** Writes the member at the end of a path, or replaces one of the value's own type. */
TextManagerDefinitions::SetReturnValue writeLeaf(QJsonObject& object, QStringView key,
                                                 const QJsonValue& value)
{
    if (object.contains(key) && object.value(key).type() != value.type())
        return TextManagerDefinitions::Error;
    setMember(object, key, value);
    return TextManagerDefinitions::Success;
}

QString urlFromStoragePath(const QString& storagePath)
{
    static const QString childLevel =
        LanguageDefinitions::getUrlSeparator() + LanguageDefinitions::getJsonChildsKey();
    QString url = storagePath;
    url.remove(childLevel);
    url.squeeze(); // the room of the longest path would stay with it
    return url;
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
    QString::size_type keyStart = 0;
    for (;;) {
        const auto keyEnd = endOfKey(textUrl, keyStart);
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
    // Levels in place of recursion, whose depth would be that of the document, and one path for all
    // of them: together, the paths of a deep document would be far longer than the document.
    struct Level {
        QJsonObject object;
        int nextMember;
        QString::size_type pathLength;
    };
    QString path = prefix;
    std::vector<Level> levels{{jsonValue.toObject(), 0, path.size()}};
    while (!levels.empty()) {
        Level& level = levels.back();
        path.truncate(level.pathLength);
        if (level.nextMember == level.object.size()) {
            levels.pop_back();
            continue;
        }
        const auto member = level.object.constBegin() + level.nextMember++;
        const QJsonValue child = member.value();
        if (!child.isObject())
            continue;
        if (!path.isEmpty())
            path += LanguageDefinitions::getUrlSeparator();
        path += member.key();
        if (checkIfTextAndCommentExists(child))
            urls.append(urlFromStoragePath(path));
        levels.push_back({child.toObject(), 0, path.size()});
    }
}

TextManagerDefinitions::SetReturnValue
LanguageInformation::setJsonValue(const QString& textUrl, const QJsonValue& jsonValue,
                                  QJsonObject& jsonObject)
{
    struct Level {
        QJsonObject object;
        QStringView key; // of the child that was taken out
    };
    std::vector<Level> parents; // in place of recursion, whose depth would be that of the path
    QJsonObject object = std::exchange(jsonObject, QJsonObject());
    QStringView rest = textUrl;
    auto keyLength = rest.indexOf(QLatin1Char('/'));
    while (keyLength >= 0) {
        const QStringView key = rest.left(keyLength);
        std::optional<QJsonObject> child = takeChild(object, key, jsonValue);
        if (!child)
            break;
        parents.push_back({std::exchange(object, *std::move(child)), key});
        rest = rest.mid(keyLength + 1);
        keyLength = rest.indexOf(QLatin1Char('/'));
    }
    const bool isLeafReached = keyLength < 0;
    const auto result =
        isLeafReached ? writeLeaf(object, rest, jsonValue) : TextManagerDefinitions::Error;
    for (; !parents.empty(); parents.pop_back()) {
        Level& parent = parents.back();
        parent.object.insert(parent.key, object);
        object = std::move(parent.object);
    }
    jsonObject = std::move(object);
    // Not before, since a message handler may look at the document.
    if (!isLeafReached)
        qWarning() << "Unable to find jsonObject for url:" << rest.toString();
    return result;
}
