#include "LookUpLocker_p.h"

#include <QThread>

#include <algorithm>

namespace
{

using namespace std::chrono_literals;
using Clock = LookUpPatience::Clock;

/** Awake, but behind every other thread that wants the processor. */
void leaveAlone(Clock::duration duration)
{
    const Clock::time_point end = Clock::now() + duration;
    while (Clock::now() < end)
        QThread::yieldCurrentThread();
}

} // namespace

Clock::duration LookUpPatience::next() const
{
    constexpr Clock::duration shortest = 1us;
    constexpr Clock::duration longest = 4ms;
    const Clock::duration last = m_Last;
    const bool isSoon = Clock::now() - m_TurnStart.load() < 4 * last;
    return isSoon ? std::min(2 * last, longest) : shortest;
}

void LookUpPatience::startTurn(Clock::duration patience)
{
    m_Last = patience;
    m_TurnStart = Clock::now();
}

void LookUpLocker::waitForTurn(LookUpPatience& patience)
{
    constexpr int mostWaits = 5;
    const Clock::duration duration = patience.next();
    bool isLocked = false;
    for (int wait = 0; wait < mostWaits && !isLocked; ++wait) {
        leaveAlone(duration);
        isLocked = tryRepeatedly();
    }
    if (!isLocked)
        m_Mutex.lock(); // it is taken for more than look-ups
    patience.startTurn(duration);
}

/** Between two look-ups of another thread the mutex is free for a moment, which one attempt may
 * miss. */
bool LookUpLocker::tryRepeatedly()
{
    constexpr int mostAttempts = 4;
    int attempt = 0;
    while (attempt < mostAttempts && !m_Mutex.tryLock())
        ++attempt;
    return attempt < mostAttempts;
}
