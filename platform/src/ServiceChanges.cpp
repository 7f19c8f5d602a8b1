#include "ServiceChanges.h"

#include "DeviceBus.h"

#include <QDBusConnection>

#include <algorithm>

namespace
{

constexpr int firstDelay = 100;
constexpr int longestDelay = 3200;
constexpr int answerTime = static_cast<int>(DeviceBus::limit.count());

} // namespace

ServiceChanges::ServiceChanges(const QString& moduleName, const QString& objectName,
                               QObject* parent)
    : QObject(parent)
    , m_StrModuleName(moduleName)
    , m_StrObjectName(objectName)
    , m_Delay(firstDelay)
    , m_Timer(this)
    , m_Burst(this)
{
    m_Timer.setSingleShot(true);
    connect(&m_Timer, &QTimer::timeout, this, &ServiceChanges::askAgain);
    connect(&m_Burst, &ChangeBurst::instanceChanged, this, &ServiceChanges::instanceChanged);
    connect(&m_Burst, &ChangeBurst::somethingChanged, this, &ServiceChanges::somethingChanged);
}

void ServiceChanges::listen()
{
    std::call_once(m_ListeningFlag, [this] { subscribe(DeviceBus::connection()); });
}

void ServiceChanges::noteAnswer(const QDBusMessage& answer)
{
    if (!DeviceBus::isOfServiceNotAtWork(answer))
        m_Delay = firstDelay;
    else if (!m_IsAskingAgain.exchange(true)) // events would pile up where no loop takes them
        QMetaObject::invokeMethod(this, &ServiceChanges::waitToAskAgain, Qt::QueuedConnection);
}

void ServiceChanges::subscribe(QDBusConnection bus)
{
    if (connectSignals(bus) && bus.isConnected())
        askForOwner(bus);
    else
        QMetaObject::invokeMethod(this, &ServiceChanges::hearConnectionLost, Qt::QueuedConnection);
}

bool ServiceChanges::connectSignals(QDBusConnection& bus)
{
    // No sender is named: Qt would ask the bus who that is, for as long as the bus likes.
    const QString anybody;
    const QString path = DeviceBus::objectPath(m_StrObjectName);
    const QString& interface = DeviceBus::interfaceName();
    return bus.connect(anybody, path, interface, QStringLiteral("configurationChanged"), this,
                       SLOT(hearInstanceChange(QString, QDBusMessage))) &&
           bus.connect(anybody, path, interface, QStringLiteral("configurationDataChanged"), this,
                       SLOT(hearChange(QDBusMessage))) &&
           bus.connect(anybody, QStringLiteral("/org/freedesktop/DBus"), DeviceBus::busName(),
                       QStringLiteral("NameOwnerChanged"),
                       {DeviceBus::serviceName(m_StrModuleName)}, QStringLiteral("sss"), this,
                       SLOT(hearOwner(QString, QString, QString, QDBusMessage))) &&
           bus.connect(anybody, QStringLiteral("/org/freedesktop/DBus/Local"),
                       QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                       this, SLOT(hearConnectionLost()));
}

bool ServiceChanges::isOwner(const QDBusMessage& message)
{
    if (!m_Owner)
        m_SendersBeforeOwner.insert(message.service());
    return m_Owner == message.service();
}

void ServiceChanges::hearInstanceChange(const QString& instance, const QDBusMessage& message)
{
    if (isOwner(message))
        m_Burst.addInstance(instance);
}

void ServiceChanges::hearChange(const QDBusMessage& message)
{
    if (isOwner(message))
        m_Burst.addSomething();
}

void ServiceChanges::hearOwner(const QString&, const QString&, const QString& owner,
                               const QDBusMessage& message)
{
    if (message.service() != DeviceBus::busName())
        return;
    m_Owner = owner;
    m_Timer.stop();
    m_Delay = firstDelay;
    if (!owner.isEmpty())
        askWhetherAtWork();
}

void ServiceChanges::hearConnectionLost()
{
    if (m_WasConnectionLost)
        return;
    m_WasConnectionLost = true;
    m_IsChangeMissed = true;
    m_Owner.reset();
    m_Timer.stop();
    m_Delay = firstDelay;
    waitToAskAgain();
}

void ServiceChanges::askForOwner(const QDBusConnection& bus)
{
    bus.callWithCallback(DeviceBus::questionToBus(QStringLiteral("GetNameOwner"),
                                                  {DeviceBus::serviceName(m_StrModuleName)}),
                         this, SLOT(takeOwner(QString)), SLOT(takeNoOwner(QDBusError)), answerTime);
}

void ServiceChanges::takeOwner(const QString& owner)
{
    const bool wasHeard = m_SendersBeforeOwner.contains(owner);
    m_SendersBeforeOwner.clear();
    m_Owner = owner;
    if (m_IsChangeMissed || wasHeard)
        askWhetherAtWork();
}

void ServiceChanges::takeNoOwner(const QDBusError& error)
{
    if (!DeviceBus::isOfServiceNotThere(error))
        waitToAskAgain();
    else if (!m_Owner) // its coming will be heard
        takeOwner(QString());
}

void ServiceChanges::askWhetherAtWork()
{
    DeviceBus::connectionAtOnce().callWithCallback(
        DeviceBus::anyQuestion(m_StrModuleName, m_StrObjectName), this, SLOT(takeSignOfWork()),
        SLOT(takeNoAnswer(QDBusError)), answerTime);
}

void ServiceChanges::takeSignOfWork()
{
    m_IsChangeMissed = false;
    m_Burst.addSomething();
}

void ServiceChanges::takeNoAnswer(const QDBusError& error)
{
    if (DeviceBus::isOfServiceNotAtWork(error))
        waitToAskAgain();
    else if (!DeviceBus::isOfServiceNotThere(error))
        takeSignOfWork();
}

void ServiceChanges::waitToAskAgain()
{
    m_IsAskingAgain = false;
    if (m_Timer.isActive())
        return;
    m_Timer.start(m_Delay);
    m_Delay = std::min(2 * m_Delay, longestDelay);
}

void ServiceChanges::askAgain()
{
    const QDBusConnection bus = DeviceBus::connectionAtOnce();
    if (!m_WasConnectionLost) {
        m_Owner ? askWhetherAtWork() : askForOwner(bus);
    } else if (bus.isConnected()) {
        m_WasConnectionLost = false;
        subscribe(bus);
    } else {
        waitToAskAgain();
    }
}
