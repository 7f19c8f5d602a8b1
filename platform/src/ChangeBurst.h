#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

/**
 * Makes one change of a burst of them: each is told once, when no more have come for 20
 * milliseconds, and after a second of changes at the latest. Used in the thread that it lives in,
 * which needs an event loop.
 */
class ChangeBurst : public QObject
{
    Q_OBJECT

public:
    explicit ChangeBurst(QObject* parent);

    void addInstance(const QString& instance);
    void addSomething();

Q_SIGNALS:
    /** Listeners may delete this object. */
    void instanceChanged(const QString& instance);
    void somethingChanged();

private:
    void wait();
    void tell();

    QTimer m_Timer;
    QElapsedTimer m_SinceFirst;
    QStringList m_Instances; ///< of each change, in the order in which they came
    bool m_HasSomething = false;
};
