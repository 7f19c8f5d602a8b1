#pragma once

#include <QSocketNotifier>

#include <csignal>

/**
 * Makes SIGINT and SIGTERM quit the application's event loop, in place of ending the program at
 * once; a signal that comes before the loop runs quits it as soon as it does.
 *
 * Made once, before anything starts a thread: threads inherit that these signals are held back.
 * Destroyed in the thread that made it, where a signal, also one that came meanwhile, then ends the
 * program at once: what is left to do may take too long.
 */
class TerminationSignals
{
public:
    TerminationSignals();
    ~TerminationSignals();
    Q_DISABLE_COPY_MOVE(TerminationSignals)

private:
    sigset_t m_PreviousMask;
    const int m_Descriptor;
    QSocketNotifier m_Notifier;
};
