#include "OddService.h"

#include <QDBusMessage>

OddService::OddService()
    : m_Bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "odd"))
{
    m_Bus.registerService("Device.DeviceManager");
}

OddService::~OddService()
{
    m_Bus.unregisterService("Device.DeviceManager");
    QDBusConnection::disconnectFromBus("odd");
    m_Thread.quit();
    m_Thread.wait();
}

void OddService::answer(const QVariantList& values)
{
    m_Answer = values;
    moveToThread(&m_Thread);
    m_Thread.start(); // the thread sanitizer sees that the answer was there before
    m_Bus.registerVirtualObject("/Configuration", this);
}

bool OddService::handleMessage(const QDBusMessage& message, const QDBusConnection& bus)
{
    return bus.send(message.createReply(m_Answer));
}
