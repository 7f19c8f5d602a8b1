#pragma once

#include "DBusReply.h"
#include "ReferencePlatformExport.h"

#include <QObject>
#include <QSharedPointer>
#include <QString>

/**
 * Client of one module's configuration service on the device's bus.
 *
 * **The bus.** The environment variable TEXTMANAGER_BUS names it: "session" or "system". Without
 * it, it is the session bus where DBUS_SESSION_BUS_ADDRESS is set, as on a desktop, and the system
 * bus elsewhere, as on a device. All clients of a process share one connection, made for the first.
 *
 * **Waiting.** Calls block until the service has answered, for one second at the most: a service
 * that hangs gives an error, and a bus that hangs counts as one that is not there. A service that
 * does not run is not started.
 *
 * **Restarts.** A service that comes back is heard again. What changed meanwhile was announced to
 * nobody, so that its return counts as a change: configurationDataChanged(). A bus that comes back
 * needs a new client.
 *
 * **Threads.** Reads may come from any thread. Signals are emitted in the thread that the object
 * lives in, which needs an event loop. The shared pointer may be dropped in any thread.
 */
class REFERENCEPLATFORM_EXPORT ConfigurationFileHandlerDBusConnector : public QObject
{
    Q_OBJECT

public:
    /**
     * A client that hears of every change from now on: what is read afterwards misses none.
     *
     * @return null when the bus or the service is not there; nothing is logged.
     */
    static QSharedPointer<ConfigurationFileHandlerDBusConnector>
    createAndConnect(const QString& moduleName, const QString& objectName);

    ~ConfigurationFileHandlerDBusConnector() override;

    /**
     * Reads one configuration element.
     *
     * @return its value; invalid for an element without one; an error, with the bus's or the
     * service's text, when it could not be read.
     */
    DBusReply getConfigurationElementValue(const QString& instance, const QString& key,
                                           const QString& moduleName) const;
    /** Reads one dynamic text, of a kind such as "Device". @return as above. */
    DBusReply getDynamicText(const QString& instance, const QString& urlIncludingIndex,
                             const QString& kind, const QString& language) const;

Q_SIGNALS:
    /** The configuration of one instance changed. */
    void configurationChanged(const QString& strInstanceName);
    /** Configuration data changed that belong to no named instance, or the service came back. */
    void configurationDataChanged();

private Q_SLOTS:
    void serviceOwnerChanged(const QString& service, const QString& previousOwner,
                             const QString& owner);

private:
    ConfigurationFileHandlerDBusConnector(const QString& moduleName, const QString& objectName);
    bool subscribe();
    DBusReply read(const QString& method, const QStringList& arguments) const;

    const QString m_StrModuleName;
    const QString m_StrObjectName;
};
