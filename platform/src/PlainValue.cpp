#include "PlainValue.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>
#include <QVariantList>
#include <QVariantMap>

namespace
{

QVariantList readList(const QDBusArgument& argument)
{
    QVariantList values;
    while (!argument.atEnd())
        values.append(toPlainValue(argument.asVariant()));
    return values;
}

QVariantMap readMap(const QDBusArgument& argument)
{
    QVariantMap values;
    while (!argument.atEnd()) {
        argument.beginMapEntry();
        const QString key = toPlainValue(argument.asVariant()).toString();
        values.insert(key, toPlainValue(argument.asVariant()));
        argument.endMapEntry();
    }
    return values;
}

QVariantList readBytes(const QByteArray& bytes)
{
    QVariantList values;
    for (const char byte : bytes)
        values.append(static_cast<int>(static_cast<uchar>(byte)));
    return values;
}

QVariant readContainer(const QDBusArgument& argument)
{
    QVariant values;
    switch (argument.currentType()) {
    case QDBusArgument::ArrayType:
        argument.beginArray();
        values = readList(argument);
        argument.endArray();
        break;
    case QDBusArgument::StructureType:
        argument.beginStructure();
        values = readList(argument);
        argument.endStructure();
        break;
    case QDBusArgument::MapType:
        argument.beginMap();
        values = readMap(argument);
        argument.endMap();
        break;
    default:
        break;
    }
    return values;
}

} // namespace

QVariant toPlainValue(const QVariant& value)
{
    const int type = value.userType();
    if (type == qMetaTypeId<QDBusVariant>())
        return toPlainValue(value.value<QDBusVariant>().variant());
    if (type == qMetaTypeId<QDBusObjectPath>())
        return value.value<QDBusObjectPath>().path();
    if (type == qMetaTypeId<QDBusSignature>())
        return value.value<QDBusSignature>().signature();
    if (type == QMetaType::UChar || type == QMetaType::Short || type == QMetaType::UShort)
        return value.toInt();
    if (type == QMetaType::QByteArray)
        return readBytes(value.toByteArray());
    if (type == QMetaType::QStringList)
        return value.toList();
    if (type == qMetaTypeId<QDBusArgument>())
        return readContainer(value.value<QDBusArgument>());
    return value;
}
