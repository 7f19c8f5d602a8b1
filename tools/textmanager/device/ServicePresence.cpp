#include "ServicePresence.h"

#include "Console.h"
#include "DeviceBus.h"

#include "DeviceManagerDefinitions.h"

ServicePresence::ServicePresence()
{
    const QDBusConnection bus = DeviceBus::connection();
    if (!bus.isConnected())
        return;
    QObject::connect(&m_Watcher, &QDBusServiceWatcher::serviceRegistered, [] {
        printMessage(QStringLiteral("the configuration service of the device has come."));
    });
    QObject::connect(&m_Watcher, &QDBusServiceWatcher::serviceUnregistered, [] {
        printMessage(
            QStringLiteral("the configuration service of the device has gone; the language "
                           "stays as it is until it comes back."));
    });
    m_Watcher.setConnection(bus);
    m_Watcher.addWatchedService(DeviceBus::serviceName(DeviceManagerDefinitions::getModuleName()));
}
