// Values, one a line behind the letter of its type: sent over a bus, received and made plain.

#include "FuzzSupport.h"
#include "PlainValue.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServer>
#include <QDBusVirtualObject>

#include <type_traits>

namespace
{

/** Sends values from one connection of this process to another. */
class Bus : public QDBusVirtualObject
{
public:
    Bus()
    {
        connect(&m_Server, &QDBusServer::newConnection, this, [this](QDBusConnection connection) {
            connection.registerVirtualObject("/", this, QDBusConnection::SubPath);
            m_Connections.append(connection);
        });
    }

    QVariant received(const QVariant& value)
    {
        m_Arguments.clear();
        QDBusMessage message = QDBusMessage::createMethodCall("", "/x", "x.y", "z");
        message.setArguments({value});
        require(m_Client.send(message), "a value that can be sent");
        while (m_Arguments.isEmpty() && m_Client.isConnected())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        require(!m_Arguments.isEmpty(), "a value that the bus takes");
        return m_Arguments.first();
    }

    QString introspect(const QString&) const override { return QString(); }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override
    {
        m_Arguments = message.arguments();
        return true;
    }

private:
    QDBusServer m_Server{"unix:tmpdir=/tmp"};
    QDBusConnection m_Client = QDBusConnection::connectToPeer(m_Server.address(), "client");
    QList<QDBusConnection> m_Connections;
    QVariantList m_Arguments;
};

/** A value as it is sent, and the plain one that is expected. */
struct Value {
    QVariant sent;
    QVariant plain;
};

template<typename Number>
Value number(const QByteArray& digits)
{
    const auto sent = static_cast<Number>(digits.toLongLong());
    constexpr bool isSmall = !std::is_same_v<Number, bool> && sizeof(Number) < sizeof(int);
    return {QVariant::fromValue(sent), isSmall ? QVariant(int(sent)) : QVariant::fromValue(sent)};
}

Value text(const QByteArray& utf8)
{
    const QString text = QString::fromUtf8(utf8.constData()); // up to its first zero byte
    return {text, text};
}

Value objectPath(const QByteArray& path)
{
    const QDBusObjectPath sent('/' + QString(path.toHex()));
    return {QVariant::fromValue(sent), sent.path()};
}

Value signature(const QByteArray&)
{
    return {QVariant::fromValue(QDBusSignature(QString("a{sv}"))), "a{sv}"};
}

/** An array of the parts that are of the type of the first. */
Value arrayOf(const QVector<Value>& parts)
{
    // What is composed is of a type that is known only when it is sent: such go as variants.
    const int first = parts.isEmpty() ? int(QMetaType::Int) : parts.first().sent.userType();
    const bool areComposed = first == qMetaTypeId<QDBusArgument>();
    QDBusArgument array;
    QVariantList plain;
    array.beginArray(areComposed ? qMetaTypeId<QDBusVariant>() : first);
    for (const Value& part : parts) {
        if (part.sent.userType() != first)
            continue;
        array.appendVariant(areComposed ? QVariant::fromValue(QDBusVariant(part.sent)) : part.sent);
        plain.append(part.plain);
    }
    array.endArray();
    return {QVariant::fromValue(array), plain};
}

Value structureOf(const QVector<Value>& parts)
{
    QDBusArgument structure;
    QVariantList plain;
    structure.beginStructure();
    for (const Value& part : parts) {
        structure.appendVariant(part.sent);
        plain.append(part.plain);
    }
    structure.endStructure();
    return {QVariant::fromValue(structure), plain};
}

Value mapOf(const QVector<Value>& parts)
{
    QDBusArgument map;
    QVariantMap plain;
    map.beginMap(QMetaType::UShort, qMetaTypeId<QDBusVariant>());
    for (const Value& part : parts) {
        map.beginMapEntry();
        map << quint16(plain.size()) << QDBusVariant(part.sent);
        map.endMapEntry();
        plain.insert(QString::number(plain.size()), part.plain);
    }
    map.endMap();
    return {QVariant::fromValue(map), plain};
}

Value take(FuzzInput& input, int depth = 0)
{
    static const QMap<char, Value (*)(const QByteArray&)> basic = {
        {'b', number<bool>},    {'y', number<quint8>},  {'n', number<qint16>},
        {'q', number<quint16>}, {'i', number<qint32>},  {'u', number<quint32>},
        {'x', number<qint64>},  {'t', number<quint64>}, {'d', number<double>},
        {'o', objectPath},      {'g', signature},       {'s', text}};
    static const QMap<char, Value (*)(const QVector<Value>&)> composed = {
        {'a', arrayOf}, {'(', structureOf}, {'{', mapOf}};
    constexpr int deepest = 12; // a message has at most 64 levels, a structure in a variant two
    const QByteArray line = input.takeLine();
    const char type = line.isEmpty() ? 's' : line.at(0);
    if (depth < deepest && type == 'v') {
        const Value inner = take(input, depth + 1);
        return {QVariant::fromValue(QDBusVariant(inner.sent)), inner.plain};
    }
    if (depth == deepest || !composed.contains(type))
        return basic.value(type, text)(line.mid(1));
    QVector<Value> parts;
    const int count = line.mid(1).toInt() % 16;
    for (int index = 0; index < count || (type == '(' && index == 0); ++index)
        parts.append(take(input, depth + 1));
    return composed.value(type)(parts);
}

/** With the types of all that is in it. */
QByteArray bytesOf(const QVariant& value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << value;
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int argumentCount = 0;
    static QCoreApplication application(argumentCount, nullptr);
    static Bus& bus = *new Bus; // it ends with the process
    FuzzInput input(data, size);
    const Value value = take(input);
    require(bytesOf(toPlainValue(bus.received(value.sent))) == bytesOf(value.plain),
            "the plain value");
    return 0;
}
