#include "DeviceService.h"

#include "LanguageFiles.h"
#include "ToolRun.h"

QByteArray DeviceService::withLanguage(const QByteArray& value)
{
    return R"({"configuration": {"DeviceSettings/DeviceSettings": {"TextManager": {"Language": )" +
           value + R"(}}}, "statusDisplay": {"available": true, "folder": "short"}})";
}

void DeviceService::restart(const QByteArray& json)
{
    const QString path = m_Folder.filePath("device.json");
    if (!json.isEmpty())
        LanguageFiles::writePath(path, json);
    start(DEVICE_SIMULATOR_PROGRAM, {path});
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
    const QStringList words = {"--session", "--print-reply", "--dest=Device.DeviceManager",
                               "/Configuration", "Interface." + method};
    const ToolRun call(words + arguments, {}, {}, "dbus-send");
    return call.output() + call.messages();
}

QString DeviceService::setLanguage(const QString& value)
{
    return tell("Configuration.setConfigurationElementValue",
                {"string:DeviceSettings/DeviceSettings", "string:Language", "string:TextManager",
                 "variant:string:" + value});
}
