#pragma once

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QString>
#include <QStringList>

#include <chrono>

/**
 * The device's bus, and how modules and objects are named on it: a service for each module, a path
 * for each object. May be used from any thread.
 */
namespace DeviceBus
{

/** How long anything is waited for: the bus, and each answer. A user interface may be waiting, too,
 * and an answer comes out of the memory of the service. */
constexpr std::chrono::milliseconds limit{1000};

/** The bus's own service and interface: "org.freedesktop.DBus". */
const QString& busName();
/** The interface of dbus/Interface.Configuration.xml. */
const QString& interfaceName();
QString serviceName(const QString& moduleName);
QString objectPath(const QString& objectName);

/**
 * The process's connection to the device's bus, made when it is first asked for and again when it
 * broke. Not the application's own: what the platform does with it is of no concern to others.
 *
 * An attempt to connect is waited for until a second after it began, by whoever asks meanwhile. The
 * connection is not connected when there is no bus, or none that answered by then.
 */
QDBusConnection connection();
/** The same without waiting: what is not connected may be so later on. */
QDBusConnection connectionAtOnce();

/** A call to the bus itself. */
QDBusMessage questionToBus(const QString& method, const QVariantList& arguments);
/** A call to the configuration interface. Never starts a service. */
QDBusMessage question(const QString& moduleName, const QString& objectName, const QString& method,
                      const QStringList& arguments = QStringList());
/** A call whose answer, an error, too, says that the service is at work: it asks for an element
 * without a name. */
QDBusMessage anyQuestion(const QString& moduleName, const QString& objectName);

/**
 * Calls a method of the configuration interface and waits for the answer, within the limit.
 *
 * A service that once did not answer in time is not waited for again: calls to it fail at once
 * until it has answered a question that stays with it meanwhile.
 *
 * @return the reply, or an error, the bus's own ones among them.
 */
QDBusMessage call(const QString& moduleName, const QString& objectName, const QString& method,
                  const QStringList& arguments = QStringList());

/** Whether the error is one of a service that has its name on the bus and is not at work: its
 * object is not there yet, or it does not answer. */
bool isOfServiceNotAtWork(const QDBusError& error);
/** Whether the error says that nobody has the service's name, or that the bus is gone. */
bool isOfServiceNotThere(const QDBusError& error);

} // namespace DeviceBus
