#include "Progress.h"

#include "Terminal.h"

#include <cstdio>

Progress::Progress(const QString& doing)
    : m_StrDoing(doing)
    , m_IsWanted(isSomeoneWatching())
{
    m_Timer.start();
}

void Progress::show(int done, int all)
{
    constexpr int patienceInMilliseconds = 200;
    if (!m_IsWanted || !m_Timer.hasExpired(patienceInMilliseconds))
        return;
    m_Timer.restart();
    m_IsShown = true;
    std::fprintf(stderr, "\r\x1b[K%s: %d of %d", qUtf8Printable(m_StrDoing), done, all);
    std::fflush(stderr);
}

void Progress::clear()
{
    if (!m_IsShown)
        return;
    std::fputs("\r\x1b[K", stderr);
    m_IsShown = false;
}
