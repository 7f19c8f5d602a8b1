#pragma once

#include <QSocketNotifier>

/**
 * Makes SIGINT and SIGTERM quit the application's event loop, in place of ending the program at
 * once; a signal that comes before the loop runs quits it as soon as it does.
 *
 * Made once, before anything starts a thread: threads inherit that these signals are held back,
 * which they stay to the end of the program.
 */
class TerminationSignals
{
public:
    TerminationSignals();
    ~TerminationSignals();
    Q_DISABLE_COPY_MOVE(TerminationSignals)

private:
    const int m_Descriptor;
    QSocketNotifier m_Notifier;
};
