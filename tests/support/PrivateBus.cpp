#include "PrivateBus.h"

#include "LanguageFiles.h"

#include <csignal>

PrivateBus::PrivateBus()
{
    const QByteArray address = "unix:path=" + m_Folder.filePath("bus").toUtf8();
    LanguageFiles::writePath(
        m_Folder.filePath("bus.conf"),
        "<busconfig><type>session</type><listen>" + address +
            "</listen><policy context='default'><allow send_destination='*' eavesdrop='true'/>"
            "<allow eavesdrop='true'/><allow own='*'/></policy>"
            "<limit name='max_message_size'>100000</limit></busconfig>");
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    start();
}

void PrivateBus::start()
{
    QProcess::start("dbus-daemon", {"--nofork", "--print-address",
                                    "--config-file=" + m_Folder.filePath("bus.conf")});
    if (!waitForReadyRead())
        qFatal("no bus: %s", readAllStandardError().constData());
    readAll();
}

void PrivateBus::stop()
{
    send(SIGKILL);
    waitForFinished();
}

void PrivateBus::send(int signal) const
{
    if (state() == Running)
        ::kill(static_cast<pid_t>(processId()), signal);
}
