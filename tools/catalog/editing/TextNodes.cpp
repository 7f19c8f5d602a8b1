#include "TextNodes.h"

#include "JsonParser.h"

#include "LanguageDefinitions.h"
#include "LanguageInformation.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace
{

QStringList keysOf(const QString& textUrl)
{
    return textUrl.split(LanguageDefinitions::getUrlSeparator());
}

/** Whether the node's children stand, or are to stand, in a child container. */
bool hasContainer(const QJsonObject& node)
{
    const auto isNode = [](const QJsonValue& member) { return member.isObject(); };
    return LanguageInformation().hasChildKey(node) ||
           std::none_of(node.constBegin(), node.constEnd(), isNode);
}

bool holdsNodeBeside(const QJsonObject& node, const QString& key)
{
    for (auto member = node.constBegin(); member != node.constEnd(); ++member) {
        if (member.key() != key && member.value().isObject())
            return true;
    }
    return false;
}

/** A value as the file shows it, shortened. */
QString shownValue(const QJsonValue& value)
{
    constexpr int mostCharacters = 40;
    const QString json = QString::fromUtf8(
        QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).chopped(1).mid(1));
    return json.size() <= mostCharacters ? json : json.left(mostCharacters) + QStringLiteral("...");
}

/** What at or above a storage path keeps a string from being written there; empty: nothing. */
QString describeObstacle(const QStringList& path, const QJsonObject& document)
{
    for (int length = 1; length <= path.size(); ++length) {
        const QStringList place = path.mid(0, length);
        const QJsonValue value = valueAt(place, document);
        const bool isLeaf = length == path.size();
        if (value.isUndefined())
            break;
        if (isLeaf ? !value.isString() : !value.isObject())
            return QStringLiteral("%1 is %2 there, %3, and no %4")
                .arg(place.join(LanguageDefinitions::getUrlSeparator()), nameOfType(value),
                     shownValue(value), isLeaf ? QStringLiteral("text") : QStringLiteral("object"));
    }
    return QString();
}

} // namespace

QStringList storagePathOf(const QString& textUrl, const QJsonObject& document)
{
    const QString& childs = LanguageDefinitions::getJsonChildsKey();
    QStringList path = {LanguageDefinitions::getJsonContentName()};
    QJsonObject node = document.value(path.first()).toObject();
    for (const QString& key : keysOf(textUrl)) {
        const bool isTopLevel = path.size() == 1;
        if (!isTopLevel && hasContainer(node)) {
            path.append(childs);
            node = node.value(childs).toObject();
        }
        path.append(key);
        node = node.value(key).toObject();
    }
    return path;
}

QJsonValue valueAt(const QStringList& path, const QJsonObject& document)
{
    QJsonValue value = document;
    for (const QString& key : path)
        value = value.toObject().value(key);
    return value;
}

QString findUnusableKey(const QString& textUrl)
{
    const QStringList keys = keysOf(textUrl);
    if (keys.contains(QString()))
        return QStringLiteral("it has an empty key. Write the keys with one '/' between two of "
                              "them, and none at the ends");
    // Each key is two levels of the file, and its parser takes 1024.
    constexpr int mostKeys = 500;
    if (keys.size() > mostKeys)
        return QStringLiteral("it has %1 keys, and a file can hold %2 of them below each other")
            .arg(QString::number(keys.size()), QString::number(mostKeys));
    const QString& childs = LanguageDefinitions::getJsonChildsKey();
    const bool hasChilds = std::any_of(keys.begin(), keys.end(),
                                       [&](const QString& key) { return key.startsWith(childs); });
    if (hasChilds)
        return QStringLiteral("its key begins with '%1', the file's word for what lies below a "
                              "node. Leave that level out, or choose another key")
            .arg(childs);
    return QString();
}

QString writeString(const QStringList& path, const QString& value, QJsonObject& document)
{
    const QString obstacle = describeObstacle(path, document);
    if (obstacle.isEmpty()) // else the library would warn of it
        LanguageInformation().setJsonValue(path.join(LanguageDefinitions::getUrlSeparator()), value,
                                           document);
    return obstacle;
}

QString insertObject(const QStringList& path, const QJsonObject& node, QJsonObject& document)
{
    const QString obstacle = describeObstacle(path, document);
    if (!obstacle.isEmpty())
        return obstacle;
    // Not by setJsonValue(): it makes what is missing on the way a copy of an object.
    QJsonValue value = node;
    for (auto length = path.size() - 1; length > 0; --length) {
        QJsonObject parent = valueAt(path.mid(0, length), document).toObject();
        parent.insert(path.at(length), value);
        value = parent;
    }
    document.insert(path.first(), value);
    return QString();
}

void removeMember(const QStringList& path, QJsonObject& document)
{
    const QString& key = path.first();
    if (path.size() == 1) {
        document.remove(key);
        return;
    }
    QJsonObject child = document.value(key).toObject();
    removeMember(path.mid(1), child);
    document.insert(key, child);
    // An empty container is needed only where it hides what stands beside it.
    const bool isContainer = key == LanguageDefinitions::getJsonChildsKey();
    if (isContainer && child.isEmpty() && !holdsNodeBeside(document, key))
        document.remove(key);
}
