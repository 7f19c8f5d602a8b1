#include "DeviceFile.h"

#include "BusValue.h"
#include "JsonParser.h"
#include "RepeatedKey.h"

#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

namespace
{

const QString& configurationKey()
{
    static const QString key = QStringLiteral("configuration");
    return key;
}

const QString& dynamicTextsKey()
{
    static const QString key = QStringLiteral("dynamicTexts");
    return key;
}

const QString& statusDisplayKey()
{
    static const QString key = QStringLiteral("statusDisplay");
    return key;
}

QString expected(const QString& what, const QString& where, const QJsonValue& found)
{
    return QStringLiteral("%1: expected %2, found %3").arg(where, what, nameOfType(found));
}

/** @param depth how many levels of objects stand above the values. */
QString findFaultInLevels(const QJsonValue& value, QString::size_type depth, const QString& where)
{
    if (depth == 0)
        return value.isNull() ? QString() : findObstacleOnBus(value, where);
    if (!value.isObject())
        return expected(QStringLiteral("an object"), where, value);
    QString fault;
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end() && fault.isEmpty(); ++member)
        fault =
            findFaultInLevels(member.value(), depth - 1, where + QLatin1Char('/') + member.key());
    return fault;
}

QString findFaultInStatusDisplay(const QJsonValue& value)
{
    const QJsonValue isAvailable = value[QStringLiteral("available")];
    const QJsonValue folder = value[QStringLiteral("folder")];
    if (!value.isObject())
        return expected(QStringLiteral("an object"), statusDisplayKey(), value);
    if (!isAvailable.isBool())
        return expected(QStringLiteral("true or false"),
                        statusDisplayKey() + QStringLiteral("/available"), isAvailable);
    if (!folder.isString())
        return expected(QStringLiteral("a text"), statusDisplayKey() + QStringLiteral("/folder"),
                        folder);
    return QString();
}

QString findFault(const QJsonObject& root)
{
    for (auto member = root.begin(); member != root.end(); ++member) {
        const QString& key = member.key();
        QString fault;
        if (key == configurationKey())
            fault = findFaultInLevels(member.value(), elementKeys({}, {}, {}).size() - 1, key);
        else if (key == dynamicTextsKey())
            fault =
                findFaultInLevels(member.value(), dynamicTextKeys({}, {}, {}, {}).size() - 1, key);
        else if (key == statusDisplayKey())
            fault = findFaultInStatusDisplay(member.value());
        else
            fault = QStringLiteral("%1: expected configuration, dynamicTexts or statusDisplay")
                        .arg(key);
        if (!fault.isEmpty())
            return fault;
    }
    return QString();
}

/** What in a file that is JSON would be lost when it is written again. */
QString findLoss(const QJsonObject& root, const QString& repeatedKey)
{
    if (repeatedKey.isEmpty())
        return findFault(root);
    return QStringLiteral("the key %1 stands there twice, and only the last one counts")
        .arg(repeatedKey);
}

QJsonObject withEntry(QJsonObject object, const QStringList& keys, const QJsonValue& value)
{
    const QString& key = keys.first();
    object.insert(key, keys.size() == 1
                           ? value
                           : withEntry(object.value(key).toObject(), keys.mid(1), value));
    return object;
}

} // namespace

DeviceFile::DeviceFile(const QString& path)
    : m_StrPath(path)
{
}

QString DeviceFile::load()
{
    QFile file(m_StrPath);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1: cannot be read: %2. Give a file such as "
                              "examples/device/device.json.")
            .arg(m_StrPath, file.errorString());
    m_Bytes = file.readAll();
    QJsonDocument document;
    std::optional<JsonFault> malformed = parseJson(m_Bytes, document);
    const std::optional<QString> repeatedKey = findRepeatedKey(m_Bytes);
    if (!malformed && !repeatedKey)
        malformed = describeMalformedJson(m_Bytes, QJsonParseError());
    const QString advice = QStringLiteral(". Correct it there; it was left as it is.");
    if (malformed)
        return malformed->in(m_StrPath) + advice;
    const QString fault = document.isObject()
                              ? findLoss(document.object(), *repeatedKey)
                              : QStringLiteral("expected an object, found an array");
    if (!fault.isEmpty())
        return QStringLiteral("%1: %2").arg(m_StrPath, fault) + advice;
    m_Root = document.object();
    return QString();
}

std::optional<QJsonValue> DeviceFile::entry(const QStringList& keys) const
{
    QJsonValue value = m_Root;
    for (const QString& key : keys)
        value = value[key];
    if (value.isUndefined())
        return std::nullopt;
    return value;
}

DeviceFile::Change DeviceFile::setEntry(const QStringList& keys, const QVariant& value)
{
    const QJsonValue json = toJson(value);
    if (json.isUndefined()) {
        m_StrErrorText =
            QStringLiteral("JSON does not keep the value: it is, or holds, no number, an "
                           "integer of more than 53 bits or what has no type there");
        return Change::Failed;
    }
    m_StrErrorText = findObstacleOnBus(json, keys.join(QLatin1Char('/')));
    if (!m_StrErrorText.isEmpty())
        return Change::Failed;
    if (entry(keys) == json)
        return Change::None;
    const QJsonObject root = withEntry(m_Root, keys, json);
    if (!write(root))
        return Change::Failed;
    m_Root = root;
    return Change::Stored;
}

bool DeviceFile::isStatusDisplayAvailable() const
{
    return entry({statusDisplayKey(), QStringLiteral("available")}).value_or(false).toBool();
}

QString DeviceFile::statusDisplayFolder() const
{
    return entry({statusDisplayKey(), QStringLiteral("folder")}).value_or(QString()).toString();
}

bool DeviceFile::write(const QJsonObject& root)
{
    QFile known(m_StrPath);
    if (!known.open(QIODevice::ReadOnly) || known.readAll() != m_Bytes) {
        m_StrErrorText = QStringLiteral("%1 was changed on disk; start the device simulator again")
                             .arg(m_StrPath);
        return false;
    }
    QSaveFile file(m_StrPath);
    const QByteArray bytes = QJsonDocument(root).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        m_StrErrorText = file.errorString();
        return false;
    }
    m_Bytes = bytes;
    return true;
}

QStringList elementKeys(const QString& instance, const QString& key, const QString& module)
{
    return {configurationKey(), instance, module, key};
}

QStringList dynamicTextKeys(const QString& instance, const QString& urlIncludingIndex,
                            const QString& kind, const QString& language)
{
    return {dynamicTextsKey(), instance, urlIncludingIndex, kind, language};
}
