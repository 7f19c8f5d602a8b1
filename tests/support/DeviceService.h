#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/** A simulated device in a process of its own. */
class DeviceService : public QProcess
{
public:
    /** @param json what the device has stored; nothing runs yet. */
    explicit DeviceService(const QByteArray& json);
    ~DeviceService() override;

    /** What a device has stored that has a language, given as JSON, and a status display. */
    static QByteArray withLanguage(const QByteArray& value);

    void write(const QByteArray& json) const;
    QByteArray read() const;
    QString file() const { return m_Folder.filePath("device.json"); }
    void removeFolder() { m_Folder.remove(); }

    /** Returns when the service is on the bus; otherwise the test program ends. */
    void startService();
    void send(int signal) const;
    /** Ends the process with a signal. @return its exit status, -1 when the signal killed it. */
    int end(int signal);

    /** Calls a method as a desktop does. @return what the call printed, its error too. */
    static QString tell(const QString& method, const QStringList& arguments = {});
    static QString setLanguage(const QString& value);

private:
    QTemporaryDir m_Folder;
};
