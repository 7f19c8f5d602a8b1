#pragma once

#include <QMutex>

#include <atomic>
#include <chrono>

/**
 * How long a look-up leaves the mutex alone that it finds taken: a moment; but twice as long as the
 * last time, if that is not long ago, so that turns grow while threads look up all the time.
 *
 * The threads share it, else the least patient one would get the longest turns.
 */
class LookUpPatience
{
public:
    /** In 32 bits, which every processor reads at once; they begin anew each hour or so. */
    using Microseconds = std::chrono::duration<quint32, std::micro>;

    Microseconds next() const;
    void startTurn(Microseconds patience);

private:
    // Read by threads that do not have the mutex.
    std::atomic<Microseconds> m_Last{Microseconds(0)};
    std::atomic<Microseconds> m_TurnStart{Microseconds(0)};
};

/**
 * Holds a mutex for a look-up.
 *
 * A look-up of another thread is over before this one could be put to sleep and woken again, so it
 * is waited for awake, for a while. Threads that look up all the time take turns of many look-ups:
 * at each change the mutex and the texts move to another processor, which takes longer than a
 * look-up.
 */
class LookUpLocker
{
public:
    LookUpLocker(QMutex& mutex, LookUpPatience& patience)
        : m_Mutex(mutex)
    {
        if (!m_Mutex.tryLock())
            waitForTurn(patience);
    }
    ~LookUpLocker() { m_Mutex.unlock(); }
    Q_DISABLE_COPY_MOVE(LookUpLocker)

private:
    void waitForTurn(LookUpPatience& patience);
    bool tryRepeatedly();

    QMutex& m_Mutex;
};
