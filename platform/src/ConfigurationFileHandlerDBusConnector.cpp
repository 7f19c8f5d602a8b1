#include "ConfigurationFileHandlerDBusConnector.h"

#include "DeviceBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QThread>

namespace
{

/** Deletes the object in its own thread, which may just be delivering a signal to it. */
void deleteInItsThread(QObject* object)
{
    const QThread* home = object->thread();
    if (home == nullptr || home == QThread::currentThread() || home->isFinished())
        delete object;
    else
        object->deleteLater();
}

DBusReply toReply(const QDBusMessage& message)
{
    if (message.type() == QDBusMessage::ReplyMessage) {
        const QVariantList values = message.arguments();
        return DBusReply::fromValue(values.isEmpty() ? QVariant()
                                                     : DeviceBus::toPlainValue(values.first()));
    }
    const QString text = message.errorMessage();
    return DBusReply::fromError(text.isEmpty() ? message.errorName() : text);
}

} // namespace

QSharedPointer<ConfigurationFileHandlerDBusConnector>
ConfigurationFileHandlerDBusConnector::createAndConnect(const QString& moduleName,
                                                        const QString& objectName)
{
    if (!DeviceBus::isServiceThere(DeviceBus::connection(), moduleName))
        return nullptr;
    QSharedPointer<ConfigurationFileHandlerDBusConnector> connector(
        new ConfigurationFileHandlerDBusConnector(moduleName, objectName), deleteInItsThread);
    return connector->subscribe() ? connector : nullptr;
}

ConfigurationFileHandlerDBusConnector::ConfigurationFileHandlerDBusConnector(
    const QString& moduleName, const QString& objectName)
    : m_StrModuleName(moduleName)
    , m_StrObjectName(objectName)
{
}

ConfigurationFileHandlerDBusConnector::~ConfigurationFileHandlerDBusConnector() = default;

DBusReply ConfigurationFileHandlerDBusConnector::getConfigurationElementValue(
    const QString& instance, const QString& key, const QString& moduleName) const
{
    return read(QStringLiteral("getConfigurationElementValue"), {instance, key, moduleName});
}

DBusReply ConfigurationFileHandlerDBusConnector::getDynamicText(const QString& instance,
                                                                const QString& urlIncludingIndex,
                                                                const QString& kind,
                                                                const QString& language) const
{
    return read(QStringLiteral("getDynamicText"), {instance, urlIncludingIndex, kind, language});
}

void ConfigurationFileHandlerDBusConnector::serviceOwnerChanged(const QString&, const QString&,
                                                                const QString& owner)
{
    if (!owner.isEmpty())
        Q_EMIT configurationDataChanged();
}

bool ConfigurationFileHandlerDBusConnector::subscribe()
{
    QDBusConnection bus = DeviceBus::connection();
    const QString service = DeviceBus::serviceName(m_StrModuleName);
    const QString path = DeviceBus::objectPath(m_StrObjectName);
    const auto relay = [&](const QString& name, const char* signal) {
        return bus.connect(service, path, DeviceBus::interfaceName(), name, this, signal);
    };
    return relay(QStringLiteral("configurationChanged"), SIGNAL(configurationChanged(QString))) &&
           relay(QStringLiteral("configurationDataChanged"), SIGNAL(configurationDataChanged())) &&
           bus.connect(DeviceBus::busName(), QString(), DeviceBus::busName(),
                       QStringLiteral("NameOwnerChanged"), {service}, QStringLiteral("sss"), this,
                       SLOT(serviceOwnerChanged(QString, QString, QString)));
}

DBusReply ConfigurationFileHandlerDBusConnector::read(const QString& method,
                                                      const QStringList& arguments) const
{
    return toReply(DeviceBus::call(DeviceBus::connection(), m_StrModuleName, m_StrObjectName,
                                   method, arguments));
}
