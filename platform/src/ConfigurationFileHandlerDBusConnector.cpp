#include "ConfigurationFileHandlerDBusConnector.h"

#include "DeviceBus.h"
#include "PlainValue.h"
#include "ServiceChanges.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QMetaMethod>
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

DBusReply toReply(const QDBusMessage& message, const QString& moduleName)
{
    if (message.type() == QDBusMessage::ReplyMessage) {
        const QVariantList values = message.arguments();
        return DBusReply::fromValue(values.isEmpty() ? QVariant() : toPlainValue(values.first()));
    }
    const QDBusError error(message);
    if (error.type() != QDBusError::Disconnected && DeviceBus::isOfServiceNotThere(error))
        return DBusReply::fromError(QStringLiteral("The service %1 is not on the bus")
                                        .arg(DeviceBus::serviceName(moduleName)));
    const QString text = message.errorMessage();
    return DBusReply::fromError(text.isEmpty() ? message.errorName() : text);
}

} // namespace

QSharedPointer<ConfigurationFileHandlerDBusConnector>
ConfigurationFileHandlerDBusConnector::createAndConnect(const QString& moduleName,
                                                        const QString& objectName)
{
    if (!DeviceBus::connection().isConnected())
        return nullptr;
    return QSharedPointer<ConfigurationFileHandlerDBusConnector>(
        new ConfigurationFileHandlerDBusConnector(moduleName, objectName), deleteInItsThread);
}

ConfigurationFileHandlerDBusConnector::ConfigurationFileHandlerDBusConnector(
    const QString& moduleName, const QString& objectName)
    : m_StrModuleName(moduleName)
    , m_StrObjectName(objectName)
    , m_Changes(new ServiceChanges(moduleName, objectName, this))
{
    connect(m_Changes, &ServiceChanges::instanceChanged, this,
            &ConfigurationFileHandlerDBusConnector::configurationChanged);
    connect(m_Changes, &ServiceChanges::somethingChanged, this,
            &ConfigurationFileHandlerDBusConnector::configurationDataChanged);
}

ConfigurationFileHandlerDBusConnector::~ConfigurationFileHandlerDBusConnector() = default;

DBusReply ConfigurationFileHandlerDBusConnector::getConfigurationElementValue(
    const QString& instance, const QString& key, const QString& moduleName) const
{
    m_Changes->listen(); // before it is read, so that no change falls between the two
    const QDBusMessage answer = DeviceBus::call(m_StrModuleName, m_StrObjectName,
                                                QStringLiteral("getConfigurationElementValue"),
                                                {instance, key, moduleName});
    m_Changes->noteAnswer(answer);
    return toReply(answer, m_StrModuleName);
}

DBusReply ConfigurationFileHandlerDBusConnector::getDynamicText(const QString& instance,
                                                                const QString& urlIncludingIndex,
                                                                const QString& kind,
                                                                const QString& language) const
{
    return toReply(DeviceBus::call(m_StrModuleName, m_StrObjectName,
                                   QStringLiteral("getDynamicText"),
                                   {instance, urlIncludingIndex, kind, language}),
                   m_StrModuleName);
}

void ConfigurationFileHandlerDBusConnector::connectNotify(const QMetaMethod& signal)
{
    using Self = ConfigurationFileHandlerDBusConnector;
    if (signal == QMetaMethod::fromSignal(&Self::configurationChanged) ||
        signal == QMetaMethod::fromSignal(&Self::configurationDataChanged))
        m_Changes->listen();
}
