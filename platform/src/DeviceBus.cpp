#include "DeviceBus.h"

#include <QDBusError>
#include <QDBusPendingCall>
#include <QDebug>
#include <QHash>
#include <QMutex>
#include <QMutexLocker>

#include <future>
#include <limits>
#include <thread>

#include <dbus/dbus.h>

namespace
{

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

/**
 * Waits until the bus answers or is seen not to be there, without a limit of time. Whoever waits
 * for a bus that hangs inside of Qt holds up all connections of the application, and its end.
 */
void waitForBus(QDBusConnection::BusType type)
{
    DBusConnection* probe = dbus_bus_get_private(
        type == QDBusConnection::SessionBus ? DBUS_BUS_SESSION : DBUS_BUS_SYSTEM, nullptr);
    if (probe == nullptr)
        return; // Qt will tell why
    dbus_connection_set_exit_on_disconnect(probe, FALSE);
    dbus_connection_close(probe);
    dbus_connection_unref(probe);
}

QDBusConnection connect(QDBusConnection::BusType type)
{
    const QString name = QStringLiteral("TextManagerReferencePlatform");
    waitForBus(type);
    QDBusConnection::disconnectFromBus(name); // one that broke
    return QDBusConnection::connectToBus(type, name);
}

/** Connects in a thread of its own, which a bus that hangs never lets go. */
std::shared_future<QDBusConnection> startConnecting()
{
    std::packaged_task<QDBusConnection()> task([type = chooseBus()] { return connect(type); });
    std::shared_future<QDBusConnection> attempt = task.get_future();
    std::thread(std::move(task)).detach();
    return attempt;
}

struct Attempt {
    std::shared_future<QDBusConnection> result;
    std::chrono::steady_clock::time_point patienceEnd;

    bool isDone() const
    {
        return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    }
};

/** The last attempt to connect; a new one unless it is under way, or its connection holds. */
Attempt currentAttempt()
{
    static QMutex mutex;
    static Attempt attempt;
    const QMutexLocker locker(&mutex);
    const bool isOver =
        !attempt.result.valid() || (attempt.isDone() && !attempt.result.get().isConnected());
    if (isOver)
        attempt = {startConnecting(), std::chrono::steady_clock::now() + DeviceBus::limit};
    return attempt;
}

/** Services that did not answer in time, each with a question that stays with it. */
class SilentServices
{
public:
    bool contains(const QString& service)
    {
        const QMutexLocker locker(&m_Mutex);
        const auto question = m_Questions.constFind(service);
        return question != m_Questions.constEnd() && !question->isFinished();
    }

    void insert(const QString& service, const QDBusPendingCall& question)
    {
        const QMutexLocker locker(&m_Mutex);
        m_Questions.insert(service, question);
    }

private:
    QMutex m_Mutex;
    QHash<QString, QDBusPendingCall> m_Questions; ///< by service
};

bool isTimeOut(const QDBusError& error)
{
    return error.type() == QDBusError::NoReply || error.type() == QDBusError::TimedOut ||
           error.type() == QDBusError::Timeout;
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
    const Attempt attempt = currentAttempt();
    attempt.result.wait_until(attempt.patienceEnd);
    return attempt.isDone() ? attempt.result.get() : QDBusConnection(QString());
}

QDBusConnection connectionAtOnce()
{
    const Attempt attempt = currentAttempt();
    return attempt.isDone() ? attempt.result.get() : QDBusConnection(QString());
}

QDBusMessage questionToBus(const QString& method, const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        busName(), QStringLiteral("/org/freedesktop/DBus"), busName(), method);
    message.setArguments(arguments);
    return message;
}

QDBusMessage question(const QString& moduleName, const QString& objectName, const QString& method,
                      const QStringList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        serviceName(moduleName), objectPath(objectName), interfaceName(), method);
    for (const QString& argument : arguments)
        message << argument;
    message.setAutoStartService(false);
    return message;
}

QDBusMessage anyQuestion(const QString& moduleName, const QString& objectName)
{
    return question(moduleName, objectName, QStringLiteral("getConfigurationElementValue"),
                    {QString(), QString(), QString()});
}

QDBusMessage call(const QString& moduleName, const QString& objectName, const QString& method,
                  const QStringList& arguments)
{
    static SilentServices silentServices;
    const QString service = serviceName(moduleName);
    if (silentServices.contains(service))
        return QDBusMessage::createError(
            QDBusError::NoReply,
            QStringLiteral("%1 did not answer before and is not waited for again until it does")
                .arg(service));

    const QDBusConnection bus = connection();
    const QDBusMessage answer = bus.call(question(moduleName, objectName, method, arguments),
                                         QDBus::Block, static_cast<int>(limit.count()));
    // A connection that broke leaves its questions unanswered, too.
    if (isTimeOut(answer) && bus.isConnected())
        silentServices.insert(service, bus.asyncCall(anyQuestion(moduleName, objectName),
                                                     std::numeric_limits<int>::max()));
    return answer;
}

bool isOfServiceNotAtWork(const QDBusError& error)
{
    return isTimeOut(error) || error.type() == QDBusError::UnknownObject ||
           error.type() == QDBusError::UnknownInterface ||
           error.type() == QDBusError::UnknownMethod;
}

bool isOfServiceNotThere(const QDBusError& error)
{
    return error.type() == QDBusError::ServiceUnknown || error.type() == QDBusError::Disconnected ||
           error.name() == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner");
}

} // namespace DeviceBus
