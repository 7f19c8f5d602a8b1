#include "Progress.h"

#include "Terminal.h"

#include <cstdio>

Progress::Progress(const QString& doing)
    : m_StrDoing(doing)
    , m_IsWanted(isSomeoneWatching())
{
    m_Timer.start();
}

void Progress::show(QString::size_type done, QString::size_type all)
{
    constexpr int patienceInMilliseconds = 200;
    if (!m_IsWanted || !m_Timer.hasExpired(patienceInMilliseconds))
        return;
    m_Timer.restart();
    m_IsShown = true;
    std::fprintf(stderr, "\r\x1b[K%s: %lld of %lld", qUtf8Printable(m_StrDoing),
                 static_cast<long long>(done), static_cast<long long>(all));
    std::fflush(stderr);
}

void Progress::clear()
{
    if (!m_IsShown)
        return;
    std::fputs("\r\x1b[K", stderr);
    m_IsShown = false;
}
