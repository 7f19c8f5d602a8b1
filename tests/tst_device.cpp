#include "DeviceService.h"
#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"

#include "ConfigurationFileHandlerDBusConnector.h"
#include "DeviceManifestManager.h"
#include "SelectorUrlHandler.h"

#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>

#include <future>

namespace
{

using Connector = ConfigurationFileHandlerDBusConnector;

QSharedPointer<Connector> connectToDevice()
{
    return Connector::createAndConnect("DeviceManager", "Configuration");
}

} // namespace

class DeviceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parsesSelectorUrls_data();
    void parsesSelectorUrls();
    void answersAnErrorWithoutACall();
    void connectsToWhatIsThere_data();
    void connectsToWhatIsThere();
    void readsTheManifest_data();
    void readsTheManifest();
    void readsAndStoresDynamicTexts();
    void storesValuesOfAllTypes_data();
    void storesValuesOfAllTypes();
    void changesNothingThatItCannotStore();
    void refusesFaultyFiles_data();
    void refusesFaultyFiles();
    void isOneAlone();
    void watchesTexts();
    void watchesWithoutABus();
};

void DeviceTest::parsesSelectorUrls_data()
{
    addTable(R"(url             | parts
        DM:Conf:Inst:Path       | DM,Conf,Inst,Path
        DM:Conf:In/st:Pa/th[12] | DM,Conf,In/st,Pa/th[12]
        DM:Conf:Inst:Pfad ä     | DM,Conf,Inst,Pfad ä
                                | invalid
        DM:Conf:Inst            | invalid
        DM:Conf:Inst:           | invalid
        DM::Inst:Path           | invalid
        D.M:Conf:Inst:Path      | invalid
        DM:1Conf:Inst:Path      | invalid
        DM:Conf:In//st:Path     | invalid
        DM:Conf:Inst:Path[]     | invalid
        DM:Conf:Inst:Path[x]    | invalid
        DM:Conf:Inst:Path[1]/x  | invalid
        DM:Conf:Inst:Path:more  | invalid
    )");
}

void DeviceTest::parsesSelectorUrls()
{
    const SelectorUrlHandler handler(cell("url"));
    const QStringList parts = {handler.getModuleName(), handler.getObjectName(),
                               handler.getInstance(), handler.getUrlIncludingIndex()};
    QCOMPARE(handler.isValid() ? parts.join(',') : "invalid", cell("parts"));
    QVERIFY(handler.isValid() || parts.join("").isEmpty());
}

void DeviceTest::answersAnErrorWithoutACall()
{
    DBusReply reply;
    QVERIFY(reply.isError() && !reply.getErrorMessage().isEmpty() && !reply.getValue().isValid());
    reply = DBusReply::fromValue(1);
    QVERIFY(!reply.isError() && reply.getErrorMessage().isEmpty());
}

void DeviceTest::connectsToWhatIsThere_data()
{
    addTable(R"(module | connected
        DeviceManager  | yes
        Devicemanager  | no
        no name at all | no
                       | no
    )");
}

void DeviceTest::connectsToWhatIsThere()
{
    DeviceService device("{}");
    device.start();
    QCOMPARE(!Connector::createAndConnect(cell("module"), "Configuration").isNull(),
             cell("connected") == "yes");
}

void DeviceTest::readsTheManifest_data()
{
    addTable(R"(statusDisplay                     | folder
        {"available": true, "folder": "short"}    | short
        {"available": false, "folder": "ignored"} | none
    )");
}

void DeviceTest::readsTheManifest()
{
    DeviceService device("{\"statusDisplay\": " + cell("statusDisplay").toUtf8() + "}");
    QVERIFY(!DeviceManifestManager().isStatusDisplayAvailable()); // nobody is there to ask
    device.start();
    const DeviceManifestManager manifest;
    QCOMPARE(manifest.isStatusDisplayAvailable() ? manifest.getStatusDisplayFolder() : "none",
             cell("folder"));
}

void DeviceTest::readsAndStoresDynamicTexts()
{
    DeviceService device(
        R"({"dynamicTexts": {"Inst": {"Mode[1]": {"Device": {"de_DE": "Nacht"}}}}})");
    device.start();
    // Used in a thread other than the one it was made in.
    const auto connector = connectToDevice();
    const auto ask = [&](const QString& url, const QString& language) {
        return std::async(
                   [&] { return connector->getDynamicText("Inst", url, "Device", language); })
            .get();
    };
    QCOMPARE(ask("Mode[1]", "de_DE").getValue(), "Nacht");
    QCOMPARE(ask("Mode", "de_DE").getErrorMessage(),
             "There is no entry dynamicTexts > Inst > Mode > Device > de_DE");

    QSignalSpy changes(connector.data(), &Connector::configurationDataChanged);
    DeviceService::tell("setDynamicText", {"string:Inst", "string:Mode", "string:Device",
                                           "string:ja_JP", "variant:string:夜"});
    QVERIFY(changes.wait());
    QCOMPARE(ask("Mode", "ja_JP").getValue(), "夜");
    QVERIFY(device.read().contains("夜") && device.read().contains("Nacht"));
}

void DeviceTest::storesValuesOfAllTypes_data()
{
    addTable(R"(argument               | json
        variant:int32:-7               | -7
        variant:int64:9007199254740993 | 9007199254740993
        variant:double:0.5             | 0.5
        variant:boolean:true           | true
        variant:objpath:/a             | "/a"
    )");
}

void DeviceTest::storesValuesOfAllTypes()
{
    DeviceService device("{}");
    device.start();
    DeviceService::tell("setConfigurationElementValue",
                        {"string:I", "string:K", "string:M", cell("argument")});
    QCOMPARE(device.interrupt(), 0);
    const QJsonObject stored{
        {"configuration", parseObject(R"({"I": {"M": {"K": )" + cell("json").toUtf8() + "}}}")}};
    QCOMPARE(parseObject(device.read()), stored);

    device.start(); // what it stored it reads again, and hands out
    QCOMPARE(QJsonValue::fromVariant(
                 connectToDevice()->getConfigurationElementValue("I", "K", "M").getValue()),
             stored["configuration"]["I"]["M"]["K"]);
}

void DeviceTest::changesNothingThatItCannotStore()
{
    DeviceService device(DeviceService::withLanguage("\"de_DE\""));
    device.start();
    const auto connector = connectToDevice();
    QSignalSpy changes(connector.data(), &Connector::configurationChanged);
    device.removeFolder();
    const QString answer = DeviceService::setLanguage("ja_JP");
    QVERIFY2(answer.contains("Interface.Configuration.Error.NotStored"), qPrintable(answer));
    QCOMPARE(connector
                 ->getConfigurationElementValue("DeviceSettings/DeviceSettings", "Language",
                                                "TextManager")
                 .getValue(),
             "de_DE");
    QVERIFY(changes.isEmpty());
}

void DeviceTest::refusesFaultyFiles_data()
{
    addTable(R"(json                          | fault
                                              | :1:1: malformed JSON: syntax error while parsing value - unexpected end of input
        {\n  "configuration": {,}}            | :2:21: malformed JSON: syntax error while parsing object key - unexpected ','
        []                                    | expected an object, found an array
        {"configuraton": {}}                  | configuraton: expected configuration, dynamicTexts
        {"configuration": {"I": {"M": 1}}}    | configuration/I/M: expected an object, found a number
        {"dynamicTexts": {"I": {"U": []}}}    | dynamicTexts/I/U: expected an object, found an array
        {"configuration": {"I": {"M": {"K": [1, {"a": null}]}}}} | configuration/I/M/K[1]/a: null is
        {"statusDisplay": {"folder": "short"}} | statusDisplay/available: expected true or false
        {"statusDisplay": {"available": true}} | statusDisplay/folder: expected a string, found nothing
    )");
}

void DeviceTest::refusesFaultyFiles()
{
    const QByteArray json = cell("json").toUtf8();
    const DeviceService device(json);
    const ToolRun run({device.file()}, {}, {}, DEVICE_SIMULATOR_PROGRAM);
    QCOMPARE(run.exitStatus(), 2);
    QVERIFY2(run.messages().startsWith("device-simulator: " + device.file()) &&
                 run.messages().contains(cell("fault")),
             qPrintable(run.messages()));
    QCOMPARE(run.output(), QString());
    QCOMPARE(device.read(), json);
}

void DeviceTest::isOneAlone()
{
    DeviceService device("{}");
    device.start();
    const ToolRun second({device.file()}, {}, {}, DEVICE_SIMULATOR_PROGRAM);
    QCOMPARE(second.exitStatus(), 2);
    QVERIFY(second.messages().contains("cannot own Device.DeviceManager"));
}

void DeviceTest::watchesTexts()
{
    LanguageFiles files;
    files.write("de_DE", R"({"Content": {"A": {"text": "Ä"}}})");
    files.write("en_US", R"({"Content": {"A": {"text": "A"}, "B": {"text": "B"}}})");
    DeviceService device(DeviceService::withLanguage("\"Languages/de_DE\""));
    device.start();

    QProcess watch;
    const auto lines = [&](int count) {
        QByteArray read;
        while (count-- > 0 && (watch.canReadLine() || watch.waitForReadyRead()))
            read += watch.readLine();
        return QString::fromUtf8(read);
    };
    for (const QStringList& options : {QStringList(), QStringList{"--format", "json"}}) {
        DeviceService::setLanguage("Languages/de_DE");
        watch.start(TEXTMANAGER_PROGRAM, QStringList{"watch", files.path(), "A", "B"} + options);
        const bool isJson = !options.isEmpty();
        const auto json = [](const char* url, const char* text, const char* language) {
            return QString(R"({"currentLanguage":"%1","found":true,"text":"%2","url":"%3"})"
                           "\n")
                .arg(language, text, url);
        };
        QCOMPARE(lines(2), isJson ? json("A", "Ä", "de_DE") + json("B", "B", "de_DE") : "Ä\nB\n");
        DeviceService::setLanguage("Languages/en_US");
        QCOMPARE(lines(2), isJson ? json("A", "A", "en_US") + json("B", "B", "en_US") : "A\nB\n");
        watch.terminate();
        QVERIFY(watch.waitForFinished());
        QCOMPARE(watch.exitStatus(), QProcess::NormalExit);
        QCOMPARE(watch.exitCode(), 0);
    }
}

void DeviceTest::watchesWithoutABus()
{
    LanguageFiles files;
    files.write("de_DE", R"({"Content": {"A": {"text": "Ä"}}})");
    QProcess watch;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    watch.setProcessEnvironment(environment);
    watch.start(TEXTMANAGER_PROGRAM, {"watch", files.path(), "A", "--language", "de_DE"});
    QVERIFY(watch.waitForReadyRead());
    QCOMPARE(watch.readLine(), QByteArray("Ä\n"));
    watch.terminate();
    QVERIFY(watch.waitForFinished());
    QCOMPARE(watch.readAllStandardError(),
             QByteArray("textmanager: Invalid pointer to connector!\n"));

    // The session bus is there, the system bus is asked for, and a full disk ends the watch.
    environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TEXTMANAGER_BUS", "system");
    environment.insert("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere");
    DeviceService device("{}");
    device.start();
    watch.setProcessEnvironment(environment);
    watch.setStandardOutputFile("/dev/full");
    watch.start(TEXTMANAGER_PROGRAM, {"watch", files.path(), "A", "--language", "de_DE"});
    QVERIFY(watch.waitForFinished());
    QCOMPARE(watch.exitCode(), 2);
    QCOMPARE(watch.readAllStandardError(),
             QByteArray("textmanager: Invalid pointer to connector!\n"
                        "textmanager: cannot write the result: No space left on device\n"));
}

QTEST_GUILESS_MAIN(DeviceTest)
#include "tst_device.moc"
