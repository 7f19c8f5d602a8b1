#include "DeviceManifestManager.h"

#include "DeviceBus.h"
#include "DeviceManagerDefinitions.h"
#include "SystemInformationManagerDefinitions.h"

#include <QDBusMessage>
#include <QVariantList>

DeviceManifestManager::DeviceManifestManager()
{
    const QDBusMessage reply =
        DeviceBus::call(DeviceManagerDefinitions::getModuleName(),
                        SystemInformationManagerDefinitions::getObjectNameConfiguration(),
                        QStringLiteral("getStatusDisplay"));
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("bs"))
        return;
    m_IsStatusDisplayAvailable = reply.arguments().at(0).toBool();
    if (m_IsStatusDisplayAvailable)
        m_StrStatusDisplayFolder = reply.arguments().at(1).toString();
}

bool DeviceManifestManager::isStatusDisplayAvailable() const
{
    return m_IsStatusDisplayAvailable;
}

QString DeviceManifestManager::getStatusDisplayFolder() const
{
    return m_StrStatusDisplayFolder;
}
