#include "DeviceBus.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>
#include <QDebug>
#include <QMutex>
#include <QMutexLocker>

#include <chrono>
#include <future>
#include <thread>

namespace
{

constexpr std::chrono::milliseconds limit{1000};
constexpr std::chrono::milliseconds noTime{0};

QDBusConnection::BusType chooseBus()
{
    const QByteArray wanted = qgetenv("TEXTMANAGER_BUS");
    if (wanted == "session")
        return QDBusConnection::SessionBus;
    if (wanted == "system")
        return QDBusConnection::SystemBus;
    if (!wanted.isEmpty())
        qWarning() << "TEXTMANAGER_BUS is neither session nor system:" << wanted;
    return qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ? QDBusConnection::SystemBus
                                                                   : QDBusConnection::SessionBus;
}

/** Connects in a thread of its own: it has no limit of time, and a bus that hangs never answers. */
std::shared_future<QDBusConnection> startConnecting()
{
    std::packaged_task<QDBusConnection()> task([bus = chooseBus()] {
        const QString name = QStringLiteral("TextManagerReferencePlatform");
        QDBusConnection::disconnectFromBus(name); // one that broke
        return QDBusConnection::connectToBus(bus, name);
    });
    std::shared_future<QDBusConnection> attempt = task.get_future();
    std::thread(std::move(task)).detach();
    return attempt;
}

bool isDone(const std::shared_future<QDBusConnection>& attempt, std::chrono::milliseconds time)
{
    return attempt.valid() && attempt.wait_for(time) == std::future_status::ready;
}

QDBusMessage waitForAnswer(const QDBusConnection& bus, QDBusMessage question,
                           const QVariantList& arguments)
{
    question.setArguments(arguments);
    question.setAutoStartService(false);
    return bus.call(question, QDBus::Block, static_cast<int>(limit.count()));
}

QVariantList readList(const QDBusArgument& argument)
{
    QVariantList values;
    while (!argument.atEnd())
        values.append(DeviceBus::toPlainValue(argument.asVariant()));
    return values;
}

QVariantMap readMap(const QDBusArgument& argument)
{
    QVariantMap values;
    while (!argument.atEnd()) {
        argument.beginMapEntry();
        const QString key = DeviceBus::toPlainValue(argument.asVariant()).toString();
        values.insert(key, DeviceBus::toPlainValue(argument.asVariant()));
        argument.endMapEntry();
    }
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

namespace DeviceBus
{

const QString& busName()
{
    static const QString name = QStringLiteral("org.freedesktop.DBus");
    return name;
}

const QString& interfaceName()
{
    static const QString name = QStringLiteral("Interface.Configuration");
    return name;
}

QString serviceName(const QString& moduleName)
{
    return QStringLiteral("Device.") + moduleName;
}

QString objectPath(const QString& objectName)
{
    return QLatin1Char('/') + objectName;
}

QDBusConnection connection()
{
    static QMutex mutex;
    static std::shared_future<QDBusConnection> attempt; // the last one, guarded by the mutex
    const QMutexLocker locker(&mutex);
    if (isDone(attempt, noTime) && attempt.get().isConnected())
        return attempt.get();
    // One that still waits for a bus that hangs is not waited for again.
    const bool isPending = attempt.valid() && !isDone(attempt, noTime);
    if (!isPending)
        attempt = startConnecting();
    return isDone(attempt, isPending ? noTime : limit) ? attempt.get() : QDBusConnection(QString());
}

bool isServiceThere(const QDBusConnection& bus, const QString& moduleName)
{
    const QDBusMessage question =
        QDBusMessage::createMethodCall(busName(), QStringLiteral("/org/freedesktop/DBus"),
                                       busName(), QStringLiteral("NameHasOwner"));
    const QDBusMessage answer = waitForAnswer(bus, question, {serviceName(moduleName)});
    return answer.type() == QDBusMessage::ReplyMessage && answer.arguments().value(0).toBool();
}

QDBusMessage call(const QDBusConnection& bus, const QString& moduleName, const QString& objectName,
                  const QString& method, const QStringList& arguments)
{
    QVariantList values;
    for (const QString& argument : arguments)
        values.append(argument);
    return waitForAnswer(bus,
                         QDBusMessage::createMethodCall(serviceName(moduleName),
                                                        objectPath(objectName), interfaceName(),
                                                        method),
                         values);
}

QVariant toPlainValue(const QVariant& value)
{
    const int type = value.userType();
    if (type == qMetaTypeId<QDBusVariant>())
        return toPlainValue(value.value<QDBusVariant>().variant());
    if (type == qMetaTypeId<QDBusObjectPath>())
        return value.value<QDBusObjectPath>().path();
    if (type == qMetaTypeId<QDBusSignature>())
        return value.value<QDBusSignature>().signature();
    if (type == qMetaTypeId<QDBusArgument>())
        return readContainer(value.value<QDBusArgument>());
    return value;
}

} // namespace DeviceBus
