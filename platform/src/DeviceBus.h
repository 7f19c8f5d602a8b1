#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QStringList>
#include <QVariant>

/**
 * The device's bus, and how modules and objects are named on it: a service for each module, a path
 * for each object. May be used from any thread.
 */
namespace DeviceBus
{

/** The bus's own service and interface: "org.freedesktop.DBus". */
const QString& busName();
/** The interface of dbus/Interface.Configuration.xml. */
const QString& interfaceName();
QString serviceName(const QString& moduleName);
QString objectPath(const QString& objectName);

/**
 * The process's connection to the device's bus, made when it is first asked for and again when it
 * broke. Not the application's own: what the platform does with it is of no concern to others. It
 * is not connected when there is no bus, or none that answers within the limit of call().
 */
QDBusConnection connection();

/** Whether the service of @p moduleName runs; waits for the bus as call() waits for a service. */
bool isServiceThere(const QDBusConnection& bus, const QString& moduleName);

/**
 * Calls a method of the configuration interface and waits for the answer, one second at the most,
 * since a user interface may be waiting, too: an answer comes out of the memory of the service.
 * Never starts a service.
 *
 * @return the reply, or an error, the bus's own ones among them.
 */
QDBusMessage call(const QDBusConnection& bus, const QString& moduleName, const QString& objectName,
                  const QString& method, const QStringList& arguments = QStringList());

/** @p value without the types of D-Bus: variants are unwrapped, arrays and structures become
 * lists, dictionaries become maps. It can be read once. */
QVariant toPlainValue(const QVariant& value);

} // namespace DeviceBus
