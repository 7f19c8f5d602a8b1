#include "DeviceManifestManager.h"

#include "DeviceBus.h"
#include "DeviceManagerDefinitions.h"
#include "ManifestFile.h"
#include "SystemInformationManagerDefinitions.h"

#include <QDBusMessage>
#include <QVariantList>

namespace
{

StatusDisplay askService()
{
    const QDBusMessage reply =
        DeviceBus::call(DeviceManagerDefinitions::getModuleName(),
                        SystemInformationManagerDefinitions::getObjectNameConfiguration(),
                        QStringLiteral("getStatusDisplay"));
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("bs"))
        return StatusDisplay();
    return {reply.arguments().at(0).toBool(), reply.arguments().at(1).toString()};
}

} // namespace

DeviceManifestManager::DeviceManifestManager()
{
    const std::optional<StatusDisplay> fromFile = readStatusDisplayFromFile();
    const StatusDisplay display = fromFile ? *fromFile : askService();
    m_IsStatusDisplayAvailable = display.isAvailable;
    if (display.isAvailable)
        m_StrStatusDisplayFolder = display.folder;
}

bool DeviceManifestManager::isStatusDisplayAvailable() const
{
    return m_IsStatusDisplayAvailable;
}

QString DeviceManifestManager::getStatusDisplayFolder() const
{
    return m_StrStatusDisplayFolder;
}
