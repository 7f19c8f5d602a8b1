#include "ChangeBurst.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace
{

constexpr qint64 quietTime = 20;
constexpr qint64 longestBurst = 1000;

} // namespace

ChangeBurst::ChangeBurst(QObject* parent)
    : QObject(parent)
    , m_Timer(this)
{
    m_Timer.setSingleShot(true);
    connect(&m_Timer, &QTimer::timeout, this, &ChangeBurst::tell);
}

void ChangeBurst::addInstance(const QString& instance)
{
    m_Instances.append(instance);
    wait();
}

void ChangeBurst::addSomething()
{
    m_HasSomething = true;
    wait();
}

void ChangeBurst::wait()
{
    if (!m_Timer.isActive())
        m_SinceFirst.start();
    const qint64 timeLeft = std::max<qint64>(0, longestBurst - m_SinceFirst.elapsed());
    m_Timer.start(static_cast<int>(std::min(quietTime, timeLeft)));
}

void ChangeBurst::tell()
{
    QStringList instances = std::exchange(m_Instances, QStringList());
    instances.removeDuplicates();
    const bool hasSomething = std::exchange(m_HasSomething, false);
    const QPointer<ChangeBurst> guard(this);
    for (const QString& instance : qAsConst(instances)) {
        Q_EMIT instanceChanged(instance);
        if (guard.isNull())
            return;
    }
    if (hasSomething)
        Q_EMIT somethingChanged();
}
