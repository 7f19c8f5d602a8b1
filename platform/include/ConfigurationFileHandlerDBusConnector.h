#pragma once

#include "DBusReply.h"
#include "ReferencePlatformExport.h"

#include <QObject>
#include <QSharedPointer>
#include <QString>

class ServiceChanges;

/**
 * Client of one module's configuration service on the device's bus.
 *
 * **The bus.** The environment variable TEXTMANAGER_BUS names it: "session" or "system". Without
 * it, it is the session bus where DBUS_SESSION_BUS_ADDRESS is set, as on a desktop, and the system
 * bus elsewhere, as on a device; so also, after a warning, when it names none of the two. All
 * clients of a process share one connection, made for the first.
 *
 * **Waiting.** Whatever waits does so for one second at the most, step by step: to connect to the
 * bus, to be answered. So createAndConnect() blocks for a second at the most, and a read for two;
 * on a bus that is there it is nothing and one. A service that hangs gives an error, and its next
 * reads fail at once until it answers again; a bus that hangs counts as one that is not there. A
 * service that does not run is not started.
 *
 * **Changes** are heard from the moment that a signal is connected or a configuration element is
 * read, whichever comes first: what is read afterwards misses none. A client that only reads
 * dynamic texts hears of none, and a read of it is one call. Only the owner of the service's name
 * is listened to. Changes of a kind that come together are told once: when no more have come for 20
 * milliseconds, after a second at the latest.
 *
 * **Start and restarts.** Whether the service is there plays no part in making a client: without
 * it, reads are errors. A service that comes, or comes back, is heard, and so is a bus that comes
 * back. What changed meanwhile was announced to nobody, so that it counts as a change:
 * configurationDataChanged(), once the service answers. The same follows when a configuration
 * element could not be read because the service had its name and not yet its object, or hung. It is
 * asked for in the background, first after a tenth of a second, then ever less often, every three
 * seconds in the end.
 *
 * **Threads.** Reads may come from any thread. Signals are emitted in the thread that the object
 * lives in, which needs an event loop. The shared pointer may be dropped in any thread.
 */
class REFERENCEPLATFORM_EXPORT ConfigurationFileHandlerDBusConnector : public QObject
{
    Q_OBJECT

public:
    /** A client of an object of a module. @return null when the bus is not there, which is not
     * logged; a service that is not there is no reason. */
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
    /** Configuration data changed that belong to no named instance, or the service came or came
     * back. */
    void configurationDataChanged();

protected:
    /** Subscribes at the service with the first connection of a slot, and not before. */
    void connectNotify(const QMetaMethod& signal) override;

private:
    ConfigurationFileHandlerDBusConnector(const QString& moduleName, const QString& objectName);

    const QString m_StrModuleName;
    const QString m_StrObjectName;
    ServiceChanges* const m_Changes; ///< belongs to this object
};
