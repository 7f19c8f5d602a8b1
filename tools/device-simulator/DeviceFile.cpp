#include "DeviceFile.h"

#include "JsonParser.h"

#include <QFile>
#include <QJsonArray>
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

QString describeType(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Null:
        return QStringLiteral("null");
    case QJsonValue::Bool:
        return QStringLiteral("true or false");
    case QJsonValue::Double:
        return QStringLiteral("a number");
    case QJsonValue::String:
        return QStringLiteral("a string");
    case QJsonValue::Array:
        return QStringLiteral("an array");
    case QJsonValue::Object:
        return QStringLiteral("an object");
    case QJsonValue::Undefined:
        break;
    }
    return QStringLiteral("nothing");
}

QString expected(const QString& what, const QString& where, const QJsonValue& found)
{
    return QStringLiteral("%1: expected %2, found %3").arg(where, what, describeType(found));
}

/** A value inside of a value must not be null, which the bus cannot carry. */
QString findNull(const QJsonValue& value, const QString& where)
{
    if (value.isNull())
        return QStringLiteral("%1: null is no part of a value").arg(where);
    QString fault;
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end() && fault.isEmpty(); ++member)
        fault = findNull(member.value(), where + QLatin1Char('/') + member.key());
    const QJsonArray array = value.toArray();
    for (int index = 0; index < array.size() && fault.isEmpty(); ++index)
        fault = findNull(array.at(index), QStringLiteral("%1[%2]").arg(where).arg(index));
    return fault;
}

/** @param depth how many levels of objects stand above the values. */
QString findFaultInLevels(const QJsonValue& value, int depth, const QString& where)
{
    if (depth == 0)
        return value.isNull() ? QString() : findNull(value, where);
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
        return expected(QStringLiteral("a string"), statusDisplayKey() + QStringLiteral("/folder"),
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
        return QStringLiteral("%1: cannot be read: %2").arg(m_StrPath, file.errorString());
    QJsonDocument document;
    if (const auto fault = parseJson(file.readAll(), document))
        return QStringLiteral("%1:%2:%3: %4")
            .arg(m_StrPath)
            .arg(fault->line)
            .arg(fault->column)
            .arg(fault->reason);
    const QString fault = document.isObject()
                              ? findFault(document.object())
                              : QStringLiteral("expected an object, found an array");
    if (!fault.isEmpty())
        return QStringLiteral("%1: %2").arg(m_StrPath, fault);
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

DeviceFile::Change DeviceFile::setEntry(const QStringList& keys, const QJsonValue& value)
{
    if (entry(keys) == value)
        return Change::None;
    const QJsonObject root = withEntry(m_Root, keys, value);
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
    QSaveFile file(m_StrPath);
    const QByteArray bytes = QJsonDocument(root).toJson();
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    m_StrErrorText = isWritten ? QString() : file.errorString();
    return isWritten;
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
