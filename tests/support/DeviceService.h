#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <csignal>

/** A simulated device in a process of its own. */
class DeviceService : public QProcess
{
public:
    /** @param json what the device has stored. The service is on the bus. */
    explicit DeviceService(const QByteArray& json) { restart(json); }
    ~DeviceService() override { end(SIGKILL); }

    /** What a device has stored that has a language, given as JSON, and a status display. */
    static QByteArray withLanguage(const QByteArray& value);

    /** Puts the service back on the bus, with @p json unless that is empty; where that cannot be
     * done, the test program ends. */
    void restart(const QByteArray& json = QByteArray());
    void removeFolder() { m_Folder.remove(); }
    void send(int signal) const;
    /** Ends the process with a signal. @return its exit status. */
    int end(int signal);

    /** Calls a method, such as "Configuration.setDynamicText", as a desktop does. @return what the
     * call printed, its error too. */
    static QString tell(const QString& method, const QStringList& arguments = {});
    static QString setLanguage(const QString& value);

private:
    QTemporaryDir m_Folder;
};
