#include "TerminationSignals.h"

#include <QCoreApplication>

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace
{

/** Holds the signals back. @return a descriptor that can be read once one of them has come. */
int redirectSignals(sigset_t& previousMask)
{
    sigset_t signalSet;
    sigemptyset(&signalSet);
    sigaddset(&signalSet, SIGINT);
    sigaddset(&signalSet, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signalSet, &previousMask);
    return signalfd(-1, &signalSet, SFD_CLOEXEC);
}

} // namespace

TerminationSignals::TerminationSignals()
    : m_Descriptor(redirectSignals(m_PreviousMask))
    , m_Notifier(m_Descriptor, QSocketNotifier::Read)
{
    QObject::connect(&m_Notifier, &QSocketNotifier::activated, &m_Notifier, [this] {
        signalfd_siginfo signal; // taken, so that it does not end the program later on
        if (read(m_Descriptor, &signal, sizeof(signal)) > 0)
            QCoreApplication::quit();
    });
}

TerminationSignals::~TerminationSignals()
{
    m_Notifier.setEnabled(false);
    close(m_Descriptor);
    pthread_sigmask(SIG_SETMASK, &m_PreviousMask, nullptr);
}
