#pragma once

#include "ChangeBurst.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

#include <atomic>
#include <mutex>
#include <optional>

class QDBusConnection;

/**
 * Hears what a configuration service announces, for as long as the program runs: the service may
 * come late, or restart, and so may the bus.
 *
 * What changed while nobody could hear of it counts as a change once the service is at work again.
 * So does what a read could not be told because the service was not at work. Only whoever owns the
 * service's name is listened to.
 *
 * Lives in the thread of the connector that it belongs to. Nothing here waits for the service.
 */
class ServiceChanges : public QObject
{
    Q_OBJECT

public:
    ServiceChanges(const QString& moduleName, const QString& objectName, QObject* parent);

    /**
     * Begins to listen, the first time that it is called. From any thread.
     *
     * The bus is told first: what the service announces after a call that follows is heard.
     */
    void listen();
    /** Sees to it that the service is asked again where it was not at work. From any thread. */
    void noteAnswer(const QDBusMessage& answer);

Q_SIGNALS:
    void instanceChanged(const QString& instance);
    void somethingChanged();

private Q_SLOTS:
    void hearInstanceChange(const QString& instance, const QDBusMessage& message);
    void hearChange(const QDBusMessage& message);
    void hearOwner(const QString& service, const QString& previousOwner, const QString& owner,
                   const QDBusMessage& message);
    void hearConnectionLost();
    void takeOwner(const QString& owner);
    void takeNoOwner(const QDBusError& error);
    void takeSignOfWork();
    void takeNoAnswer(const QDBusError& error);

private:
    void subscribe(QDBusConnection bus);
    bool connectSignals(QDBusConnection& bus);
    bool isOwner(const QDBusMessage& message);
    void askForOwner(const QDBusConnection& bus);
    void askWhetherAtWork();
    void waitToAskAgain();
    void askAgain();

    const QString m_StrModuleName;
    const QString m_StrObjectName;
    std::once_flag m_ListeningFlag;
    std::atomic<bool> m_IsAskingAgain{false};
    std::atomic<int> m_Delay; ///< in milliseconds, until the service or the bus is asked again

    // Only touched in the object's own thread.
    bool m_WasConnectionLost = false;   ///< and is not known to be there again
    bool m_IsChangeMissed = false;      ///< perhaps, since the connection was lost
    std::optional<QString> m_Owner;     ///< its unique name; empty: there is none
    QSet<QString> m_SendersBeforeOwner; ///< of changes, while the owner was not known
    QTimer m_Timer;
    ChangeBurst m_Burst;
};
