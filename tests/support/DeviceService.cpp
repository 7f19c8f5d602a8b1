#include "DeviceService.h"

#include <QFile>

#include <csignal>

DeviceService::DeviceService(const QByteArray& json)
{
    write(json);
    m_Process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

DeviceService::~DeviceService()
{
    kill();
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

QByteArray DeviceService::withLanguage(const QByteArray& value)
{
    return R"({"configuration": {"DeviceSettings/DeviceSettings": {"TextManager": {"Language": )" +
           value + R"(}}}, "statusDisplay": {"available": true, "folder": "short"}})";
}

void DeviceService::start()
{
    m_Process.start(DEVICE_SIMULATOR_PROGRAM, {file()});
    while (!m_Process.canReadLine()) {
        if (!m_Process.waitForReadyRead())
            qFatal("%s did not come up", DEVICE_SIMULATOR_PROGRAM);
    }
}

void DeviceService::kill()
{
    m_Process.kill();
    m_Process.waitForFinished();
}

void DeviceService::hang() const
{
    ::kill(static_cast<pid_t>(m_Process.processId()), SIGSTOP);
}

void DeviceService::resume() const
{
    ::kill(static_cast<pid_t>(m_Process.processId()), SIGCONT);
}

int DeviceService::interrupt()
{
    ::kill(static_cast<pid_t>(m_Process.processId()), SIGINT);
    m_Process.waitForFinished();
    return m_Process.exitStatus() == QProcess::NormalExit ? m_Process.exitCode() : -1;
}

QString DeviceService::tell(const QString& method, const QStringList& arguments)
{
    QProcess call;
    call.setProcessChannelMode(QProcess::MergedChannels);
    call.start("dbus-send",
               QStringList{"--session", "--print-reply=literal", "--dest=Device.DeviceManager",
                           "/Configuration", "Interface.Configuration." + method} +
                   arguments);
    if (!call.waitForFinished())
        qFatal("dbus-send: %s", qPrintable(call.errorString()));
    return QString::fromUtf8(call.readAll()).trimmed();
}

QString DeviceService::setLanguage(const QString& value)
{
    return tell("setConfigurationElementValue",
                {"string:DeviceSettings/DeviceSettings", "string:Language", "string:TextManager",
                 "variant:string:" + value});
}
