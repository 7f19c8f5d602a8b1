#include "DeviceService.h"

#include <QFile>

QByteArray DeviceService::withLanguage(const QByteArray& value)
{
    return R"({"configuration": {"DeviceSettings/DeviceSettings": {"TextManager": {"Language": )" +
           value + R"(}}}, "statusDisplay": {"available": true, "folder": "short"}})";
}

void DeviceService::restart(const QByteArray& json)
{
    QFile file(m_Folder.filePath("device.json"));
    if (!file.open(QIODevice::Append) || (!json.isEmpty() && !file.resize(0)))
        qFatal("cannot write %s", qPrintable(file.fileName()));
    file.write(json);
    file.close();
    start(DEVICE_SIMULATOR_PROGRAM, {file.fileName()});
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
    return exitCode();
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
