#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/** A simulated device in a process of its own; what goes wrong in it ends the test program. */
class DeviceService
{
public:
    /** Writes what the device has stored; nothing runs yet. */
    explicit DeviceService(const QByteArray& json);
    ~DeviceService();

    QString file() const { return m_Folder.filePath("device.json"); }
    void write(const QByteArray& json) const;
    QByteArray read() const;
    void removeFolder() { m_Folder.remove(); }
    /** What a device of one setting, its language, has stored; @p value is JSON. */
    static QByteArray withLanguage(const QByteArray& value);

    /** Returns when the service is on the bus. */
    void start();
    void kill();
    /** Makes the process stand still, as one that hangs, and go on. */
    void hang() const;
    void resume() const;
    /** Ends the process as its user does. @return its exit status. */
    int interrupt();

    /** Calls a method as a desktop does. @return what the call printed, its error too. */
    static QString tell(const QString& method, const QStringList& arguments = {});
    static QString setLanguage(const QString& value);

private:
    QTemporaryDir m_Folder;
    QProcess m_Process;
};
