#pragma once

#include <QProcess>
#include <QTemporaryDir>

/** A bus of the test's own, which may be stopped and started again at the same address. */
class PrivateBus : public QProcess
{
public:
    /** Starts it, as the session bus of the process. It ends connections that send it a message of
     * more than 100 000 bytes. */
    PrivateBus();
    ~PrivateBus() override { stop(); }

    void start();
    void stop();
    void send(int signal) const;

private:
    QTemporaryDir m_Folder;
};
