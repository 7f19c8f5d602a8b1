#include "LookUpLocker_p.h"

#include <algorithm>

namespace
{

using Microseconds = LookUpPatience::Microseconds;

Microseconds now()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<Microseconds>(time);
}

/**
 * Awake, and without offering the processor to others: on a busy device they would keep it for
 * much longer than this.
 */
void leaveAlone(Microseconds duration)
{
    const Microseconds start = now();
    while (now() - start <= duration) {
    }
}

} // namespace

Microseconds LookUpPatience::next() const
{
    constexpr Microseconds shortest(1);
    constexpr Microseconds longest(1000);
    const Microseconds last = m_Last;
    const bool isSoon = now() - m_TurnStart.load() < 4 * last;
    return isSoon ? std::min<Microseconds>(2 * last, longest) : shortest;
}

void LookUpPatience::startTurn(Microseconds patience)
{
    m_Last = patience;
    m_TurnStart = now();
}

void LookUpLocker::waitForTurn(LookUpPatience& patience)
{
    constexpr int mostWaits = 3;
    const Microseconds duration = patience.next();
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
