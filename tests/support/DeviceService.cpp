#include "DeviceService.h"

#include <QFile>

#include <csignal>

DeviceService::DeviceService(const QByteArray& json)
{
    write(json);
}

DeviceService::~DeviceService()
{
    end(SIGKILL);
}

QByteArray DeviceService::withLanguage(const QByteArray& value)
{
    return R"({"configuration": {"DeviceSettings/DeviceSettings": {"TextManager": {"Language": )" +
           value + R"(}}}, "statusDisplay": {"available": true, "folder": "short"}})";
}

void DeviceService::write(const QByteArray& json) const
{
    QFile file(this->file());
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

QByteArray DeviceService::read() const
{
    QFile file(this->file());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void DeviceService::startService()
{
    start(DEVICE_SIMULATOR_PROGRAM, {file()});
    while (!canReadLine()) {
        if (!waitForReadyRead())
            qFatal("no service: %s", readAllStandardError().constData());
    }
}

void DeviceService::send(int signal) const
{
    if (state() == Running)
        ::kill(static_cast<pid_t>(processId()), signal);
}

int DeviceService::end(int signal)
{
    send(signal);
    waitForFinished();
    return exitStatus() == NormalExit ? exitCode() : -1;
}

QString DeviceService::tell(const QString& method, const QStringList& arguments)
{
    QProcess call;
    call.setProcessChannelMode(MergedChannels);
    call.start("dbus-send", QStringList{"--session", "--print-reply", "--dest=Device.DeviceManager",
                                        "/Configuration", "Interface.Configuration." + method} +
                                arguments);
    if (!call.waitForFinished())
        qFatal("dbus-send: %s", qPrintable(call.errorString()));
    return QString::fromUtf8(call.readAll());
}

QString DeviceService::setLanguage(const QString& value)
{
    return tell("setConfigurationElementValue",
                {"string:DeviceSettings/DeviceSettings", "string:Language", "string:TextManager",
                 "variant:string:" + value});
}
