// A type's signature and its values, one a line: sent over a bus, received and made plain.

#include "FuzzSupport.h"
#include "PlainValue.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServer>
#include <QDBusVirtualObject>

#include <dbus/dbus.h>

namespace
{

/** Receives messages of a libdbus connection of this process, which can send values of all types.
 */
class Bus : public QDBusVirtualObject
{
public:
    Bus()
    {
        connect(&m_Server, &QDBusServer::newConnection, this, [this](QDBusConnection connection) {
            connection.registerVirtualObject("/", this, QDBusConnection::SubPath);
            m_Connections.append(connection);
        });
        m_pClient = dbus_connection_open_private(qPrintable(m_Server.address()), nullptr);
        require(m_pClient != nullptr, "a connection");
    }

    QVariant received(DBusMessage* message)
    {
        m_Arguments.clear();
        dbus_connection_send(m_pClient, message, nullptr);
        dbus_connection_flush(m_pClient);
        while (m_Arguments.isEmpty() && dbus_connection_get_is_connected(m_pClient))
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
    QList<QDBusConnection> m_Connections;
    DBusConnection* m_pClient;
    QVariantList m_Arguments;
};

/** Writes values into a message. Each operation returns the plain value that is expected. */
class Writer
{
public:
    explicit Writer(FuzzInput& input)
        : m_Input(input)
    {
    }

    QVariant write(DBusMessageIter& out, DBusSignatureIter& type, int depth)
    {
        switch (dbus_signature_iter_get_current_type(&type)) {
        case DBUS_TYPE_ARRAY:
            return writeArray(out, type, depth);
        case DBUS_TYPE_STRUCT:
            return writeStructure(out, type, depth);
        case DBUS_TYPE_VARIANT:
            return writeVariant(out, depth);
        default:
            return writeBasic(out, dbus_signature_iter_get_current_type(&type));
        }
    }

    /** A signature of one value that can be sent. */
    static QByteArray usable(const QByteArray& signature)
    {
        const bool isUsable = !signature.contains('h') && !signature.contains('\0') &&
                              dbus_signature_validate_single(signature, nullptr);
        return isUsable ? signature : "s";
    }

private:
    template<typename Number>
    Number append(DBusMessageIter& out, int type, Number number)
    {
        dbus_message_iter_append_basic(&out, type, &number);
        return number;
    }

    QVariant writeBasic(DBusMessageIter& out, int type)
    {
        const QByteArray line = m_Input.takeLine();
        const qlonglong number = line.toLongLong();
        switch (type) {
        case DBUS_TYPE_BOOLEAN:
            return append<dbus_bool_t>(out, type, number != 0 ? 1 : 0) != 0;
        case DBUS_TYPE_BYTE:
            return int(append(out, type, quint8(number)));
        case DBUS_TYPE_INT16:
            return int(append(out, type, qint16(number)));
        case DBUS_TYPE_UINT16:
            return int(append(out, type, quint16(number)));
        case DBUS_TYPE_INT32:
            return append(out, type, qint32(number));
        case DBUS_TYPE_UINT32:
            return append(out, type, quint32(number));
        case DBUS_TYPE_INT64:
            return append(out, type, qlonglong(number));
        case DBUS_TYPE_UINT64:
            return append(out, type, qulonglong(number));
        case DBUS_TYPE_DOUBLE:
            return append(out, type, line.toDouble());
        default:
            return writeText(out, type, line);
        }
    }

    QVariant writeText(DBusMessageIter& out, int type, const QByteArray& line)
    {
        const char* text = line.constData(); // up to its first zero byte
        const bool isUsable = type == DBUS_TYPE_OBJECT_PATH ? dbus_validate_path(text, nullptr)
                              : type == DBUS_TYPE_SIGNATURE ? dbus_signature_validate(text, nullptr)
                                                            : dbus_validate_utf8(text, nullptr);
        if (!isUsable)
            text = type == DBUS_TYPE_OBJECT_PATH ? "/" : "";
        dbus_message_iter_append_basic(&out, type, &text);
        const bool isNull = type == DBUS_TYPE_SIGNATURE && *text == '\0'; // as Qt reads it
        return isNull ? QString() : QString::fromUtf8(text);
    }

    QVariant writeArray(DBusMessageIter& out, DBusSignatureIter& type, int depth)
    {
        DBusSignatureIter element;
        dbus_signature_iter_recurse(&type, &element);
        char* signature = dbus_signature_iter_get_signature(&element);
        DBusMessageIter inner;
        dbus_message_iter_open_container(&out, DBUS_TYPE_ARRAY, signature, &inner);
        dbus_free(signature);
        const bool isMap = dbus_signature_iter_get_current_type(&element) == DBUS_TYPE_DICT_ENTRY;
        QVariantList list;
        QVariantMap map;
        for (int count = m_Input.takeLine().toInt() % 16; count > 0; --count) {
            if (isMap)
                writeEntry(inner, element, depth, map);
            else
                list.append(write(inner, element, depth));
        }
        dbus_message_iter_close_container(&out, &inner);
        return isMap ? QVariant(map) : QVariant(list);
    }

    void writeEntry(DBusMessageIter& out, const DBusSignatureIter& type, int depth,
                    QVariantMap& map)
    {
        DBusSignatureIter part;
        dbus_signature_iter_recurse(&type, &part);
        DBusMessageIter inner;
        dbus_message_iter_open_container(&out, DBUS_TYPE_DICT_ENTRY, nullptr, &inner);
        const QString key = write(inner, part, depth).toString();
        dbus_signature_iter_next(&part);
        map.insert(key, write(inner, part, depth));
        dbus_message_iter_close_container(&out, &inner);
    }

    QVariant writeStructure(DBusMessageIter& out, DBusSignatureIter& type, int depth)
    {
        DBusSignatureIter part;
        dbus_signature_iter_recurse(&type, &part);
        DBusMessageIter inner;
        dbus_message_iter_open_container(&out, DBUS_TYPE_STRUCT, nullptr, &inner);
        QVariantList list;
        do
            list.append(write(inner, part, depth));
        while (dbus_signature_iter_next(&part));
        dbus_message_iter_close_container(&out, &inner);
        return list;
    }

    QVariant writeVariant(DBusMessageIter& out, int depth)
    {
        // A message has at most 64 levels, of which a type may take some for itself.
        constexpr int mostVariants = 5;
        const QByteArray signature = depth < mostVariants ? usable(m_Input.takeLine()) : "s";
        DBusSignatureIter type;
        dbus_signature_iter_init(&type, signature);
        DBusMessageIter inner;
        dbus_message_iter_open_container(&out, DBUS_TYPE_VARIANT, signature, &inner);
        const QVariant value = write(inner, type, depth + 1);
        dbus_message_iter_close_container(&out, &inner);
        return value;
    }

    FuzzInput& m_Input;
};

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
    const QByteArray signature = Writer::usable(input.takeLine());
    if (signature.count('(') + signature.count('a') > 20)
        return 0;
    DBusMessage* message = dbus_message_new_method_call("x.y", "/x", "x.y", "z");
    dbus_message_set_no_reply(message, TRUE);
    DBusMessageIter out;
    dbus_message_iter_init_append(message, &out);
    DBusSignatureIter type;
    dbus_signature_iter_init(&type, signature);
    const QVariant expected = Writer(input).write(out, type, 0);
    const QVariant plain = toPlainValue(bus.received(message));
    dbus_message_unref(message);
    require(bytesOf(plain) == bytesOf(expected), "the plain value");
    return 0;
}
