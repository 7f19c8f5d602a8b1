#include "ConfigurationAdaptor.h"
#include "ConfigurationService.h"
#include "Console.h"
#include "DeviceBus.h"
#include "DeviceFile.h"
#include "HelpText.h"
#include "ManPage.h"
#include "SimulatorAdaptor.h"
#include "TerminationSignals.h"
#include "Utf8.h"

#include "DeviceManagerDefinitions.h"
#include "SystemInformationManagerDefinitions.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusError>

#include <optional>

namespace
{

CommandDescription describeProgram()
{
    return {QStringLiteral("device-simulator FILE"),
            QStringLiteral("play the configuration service of a device"),
            QStringLiteral(
                "Owns the configuration service of a device on the bus, over the JSON file FILE, "
                "until it is interrupted, which is status 0, or the bus ends the connection, which "
                "is status 2. FILE is what the device has stored; what is set on the bus is "
                "written there. A line on standard output says when the service is there.\n\nThe "
                "bus is the session bus, or the system bus where there is "
                "none; TEXTMANAGER_BUS=session or =system chooses."),
            {helpOption(), {QStringLiteral("version"), {}, QStringLiteral("Name the version.")}},
            QStringLiteral("dbus-run-session -- device-simulator device.json")};
}

ExitStatus refuse(const QString& reason)
{
    printMessage(QStringLiteral("%1\nSee 'device-simulator --help'.").arg(reason));
    return UnusableInput;
}

/** Puts the service on the bus. @return why that could not be done; empty when it could. */
QString publish(ConfigurationService& service)
{
    QDBusConnection bus = DeviceBus::connection();
    const QString path =
        DeviceBus::objectPath(SystemInformationManagerDefinitions::getObjectNameConfiguration());
    const QString name = DeviceBus::serviceName(DeviceManagerDefinitions::getModuleName());
    if (!bus.isConnected())
        return QStringLiteral("there is no bus: %1. On a desktop without one, start the program "
                              "under dbus-run-session.")
            .arg(bus.lastError().message());
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                &service, SIGNAL(busLost()));
    // The object first: whoever sees the name may ask at once.
    if (bus.registerObject(path, &service) && bus.registerService(name))
        return QString();
    return QStringLiteral("cannot own %1 on the bus: another program owns it, or the bus does not "
                          "permit it.")
        .arg(name);
}

ExitStatus simulate(const QString& path)
{
    DeviceFile file(path);
    const QString fault = file.load();
    if (!fault.isEmpty()) {
        printMessage(fault);
        return UnusableInput;
    }

    const TerminationSignals terminationSignals;
    ConfigurationService service(file);
    new ConfigurationAdaptor(&service); // belongs to the service
    new SimulatorAdaptor(&service);     // and so does this
    QObject::connect(&service, &ConfigurationService::busLost, [] {
        printMessage(QStringLiteral("the bus ended the connection. Start the device simulator "
                                    "again when the bus is there."));
        QCoreApplication::exit(UnusableInput);
    });
    const QString obstacle = publish(service);
    if (!obstacle.isEmpty()) {
        printMessage(obstacle);
        return UnusableInput;
    }
    printResult(QStringLiteral("%1 is on the bus")
                    .arg(DeviceBus::serviceName(DeviceManagerDefinitions::getModuleName())));
    flushResult();
    return static_cast<ExitStatus>(QCoreApplication::exec());
}

ExitStatus run(const QStringList& words)
{
    QCommandLineParser parser;
    const QCommandLineOption help(QStringList{QStringLiteral("h"), helpOption().name});
    parser.addOption(help);
    const QCommandLineOption version = parser.addVersionOption();
    if (!parser.parse(words))
        return refuse(parser.errorText());
    if (parser.isSet(help)) {
        printResult(helpText(describeProgram()));
        return Done;
    }
    if (parser.isSet(version)) {
        printResult(QStringLiteral("device-simulator " TEXTMANAGER_VERSION));
        return Done;
    }
    if (parser.positionalArguments().size() != 1)
        return refuse(QStringLiteral("expected one FILE."));
    if (parser.positionalArguments().constFirst() == QLatin1String("__man")) { // for the build
        printResult(manPage(describeProgram()));
        return Done;
    }
    return simulate(parser.positionalArguments().constFirst());
}

} // namespace

int main(int argc, char* argv[])
{
    useUtf8Everywhere();
    const QCoreApplication application(argc, argv);
    return finishOutput(run(QCoreApplication::arguments()));
}
