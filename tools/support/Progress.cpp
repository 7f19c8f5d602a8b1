#include "Progress.h"

#include "Console.h"

#include <cstdio>

#include <unistd.h>

namespace
{

constexpr char startOfClearedLine[] = "\r\x1b[K";

} // namespace

Progress::Progress(const QString& work, int steps)
    : m_StrWork(work)
    , m_Steps(steps)
    , m_IsShown(::isatty(STDERR_FILENO) != 0)
{
}

Progress::~Progress()
{
    if (m_IsShown && m_Step > 0)
        std::fputs(startOfClearedLine, stderr);
}

void Progress::step(const QString& name)
{
    ++m_Step;
    if (!m_IsShown)
        return;
    const QString line =
        QStringLiteral("%1 %2 of %3: %4")
            .arg(m_StrWork, QString::number(m_Step), QString::number(m_Steps), name);
    std::fprintf(stderr, "%s%s", startOfClearedLine,
                 withVisibleControls(line.toUtf8()).constData());
    std::fflush(stderr);
}
