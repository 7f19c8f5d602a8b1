#include "DeviceFiles.h"
#include "DeviceService.h"
#include "Table.h"
#include "ToolRun.h"
#include "WarningCapture.h"

#include "ConfigurationFileHandlerDBusConnector.h"
#include "SelectorUrlHandler.h"

#include <QEventLoop>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <cstdio>
#include <future>
#include <thread>

namespace
{

using Connector = ConfigurationFileHandlerDBusConnector;

/** textmanager watch, on a bus of its own choice. */
void startWatch(QProcess& watch, const QString& path, const QString& bus)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", bus);
    watch.setProcessEnvironment(environment);
    watch.start(TEXTMANAGER_PROGRAM, {"watch", path, "A", "--format", "json"});
}

/** The next answer of textmanager watch: the current language and the text. */
QString nextAnswer(QProcess& watch)
{
    while (!watch.canReadLine() && watch.waitForReadyRead(10'000 * TIME_FACTOR)) {
    }
    const QJsonObject answer = parseObject(watch.readLine());
    return answer["currentLanguage"].toString() + ": " + answer["text"].toString();
}

bool endsAtOnce(QProcess& watch)
{
    watch.terminate();
    return watch.waitForFinished(10'000 * TIME_FACTOR) &&
           watch.exitStatus() == QProcess::NormalExit && watch.exitCode() == 0;
}

} // namespace

/** What the device says: its language, its folder of short texts, and texts of its own. */
class DeviceLanguageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsTheManifestFile_data()
    {
        // The service's own folder is "short".
        addTable(R"(json                                       | folder | warning
        {"statusDisplay": {"available": true, "folder": "f"}} | f     |
        {"statusDisplay": {"available": false}}               |       |
        {"other": 7}                                          | short |
        {\n"statusDisplay": ä}                                | short | :2:18: malformed JSON: illegal
        {"statusDisplay": true}                               | short | : statusDisplay/available: expected
        {"statusDisplay": {"available": true}}                | short | : statusDisplay/folder: expected
        []                                                    | short | :1:1: expected an object
        )");
    }
    void readsTheManifestFile()
    {
        const DeviceService device(DeviceService::withLanguage("\"de_DE\""));
        const LanguageFiles files;
        files.write("manifest", cell("json").toUtf8());
        const QString path = files.file("manifest");
        qputenv("TEXTMANAGER_MANIFEST", path.toUtf8());
        WarningCapture capture;
        const QString folder = TextManager::getSmallFolder();
        qunsetenv("TEXTMANAGER_MANIFEST");
        QCOMPARE(folder, cell("folder"));
        const QString warnings = capture.take().join('\n');
        const QString beginning = cell("warning").isEmpty() ? QString() : path + cell("warning");
        QCOMPARE(warnings.left(beginning.size()), beginning);
        QCOMPARE(warnings.isEmpty(), cell("warning").isEmpty());
    }

    void readsTheLanguage_data()
    {
        addTable(R"(value | language | warning
        "a/b/c"       | c        |
        null          |          | QVariant(QVariantList, ())
        {"a": [0.5]}  |          | QVariant(QVariantMap, QMap(("a", QVariant(QVariantList, (QVariant(double, 0.5))))))
        )");
    }
    void readsTheLanguage()
    {
        DeviceService device(DeviceService::withLanguage(cell("value").toUtf8()));
        WarningCapture capture;
        const TextManager manager{QString(), QString()};
        QCOMPARE(manager.getLanguageName(), cell("language"));
        const QString warning = "Error on converting language name to string: %1 !";
        QCOMPARE(capture.take().join('\n'),
                 cell("warning").isEmpty() ? QString() : warning.arg(cell("warning")));
    }

    void followsTheSettings()
    {
        DeviceService device(DeviceService::withLanguage("\"Languages/de_DE\""));
        TextManager manager(m_Files.path(), QString());
        QSignalSpy reloads(&manager, &TextManager::languageReloaded);
        QCOMPARE(manager.getShortText("A", QString()), "short");

        const ToolRun stranger({"--session", "--type=signal", "/org/freedesktop/DBus",
                                "org.freedesktop.DBus.NameOwnerChanged",
                                "string:Device.DeviceManager", "string:", "string::1.999"},
                               {}, {}, "dbus-send");
        QCOMPARE(stranger.exitStatus(), 0);
        // In their turn: the one that is followed shows that the ones before it were not. All come
        // before the event loop runs, and are not lost.
        DeviceService::tell("DeviceSimulator.announceConfigurationChange",
                            {"string:devicesettings/devicesettings"});
        DeviceService::setLanguage("Languages/de_DE"); // no change
        DeviceService::setLanguage("Languages/ja_JP");
        QVERIFY(reloads.wait());
        QCOMPARE(currentText(manager), "ja_JP");
        std::promise<void> isListening;
        auto elsewhere = std::async(std::launch::async, [&] { // a manager follows in its own thread
            const TextManager another(m_Files.path(), "de_DE");
            QEventLoop loop;
            connect(&another, &TextManager::languageReloaded, &loop, &QEventLoop::quit);
            isListening.set_value();
            loop.exec();
            return currentText(another);
        });
        isListening.get_future().wait();
        DeviceService::tell("DeviceSimulator.announceConfigurationDataChange");
        QVERIFY(reloads.wait());
        QCOMPARE(elsewhere.get(), "ja_JP");
        QCOMPARE(reloads.size(), 2);

        device.removeFolder(); // what cannot be stored changes nothing
        const QString answer = DeviceService::setLanguage("fr_FR");
        QVERIFY2(answer.contains("Interface.Configuration.Error.NotStored: ") &&
                     answer.contains("device.json was changed on disk"),
                 qPrintable(answer));
        QCOMPARE(manager.retrieveLanguageName(), "ja_JP");
    }

    void readsAndStoresDynamicTexts()
    {
        DeviceService device(R"({"dynamicTexts": {"I": {"U[1]": {"Device": {"de_DE": "Ä"}}}}})");
        QVERIFY(DBusReply().isError());
        auto connector = Connector::createAndConnect("DeviceManager", "Configuration");
        QSignalSpy changes(connector.data(), &Connector::configurationDataChanged);
        const auto store = [](const QString& value) {
            return DeviceService::tell(
                "Configuration.setDynamicText",
                {"string:I", "string:U", "string:Device", "string:ja_JP", "variant:" + value});
        };
        for (const QString value : {"double:nan", "int64:9007199254740993"})
            QVERIFY(store(value).contains("NotStored: JSON does not keep"));
        store("int16:-5");
        QVERIFY(changes.wait());
        const auto read = [&](const QString& url, const QString& language) {
            return connector->getDynamicText("I", url, "Device", language).getValue();
        };
        QCOMPARE(read("U", "ja_JP").userType(), int(QMetaType::LongLong)); // and no text
        store("string:夜");
        QVERIFY(changes.wait());
        QCOMPARE(device.end(SIGINT), 0);
        device.restart(); // it reads what it wrote
        QCOMPARE(read("U", "ja_JP"), "夜");
        QCOMPARE(std::async(std::launch::async, read, "U[1]", "de_DE").get(), "Ä");

        const QPointer<Connector> remains(connector.data());
        std::thread([&] { connector.reset(); }).join();
        QVERIFY(remains); // a signal may just be delivered to it in its own thread
        QTRY_VERIFY(!remains);
    }

    void parsesSelectorUrls_data()
    {
        addTable(R"(url                | parts
        DM:Conf:In/st:Pfad ä/x[12] | DM,Conf,In/st,Pfad ä/x[12]
        DM::Inst:Path              | ,,,
        D.M:Conf:Inst:Path         | ,,,
        DM:Conf:In//st:Path        | ,,,
        DM:Conf:Inst:Path[x]       | ,,,
        )");
    }
    void parsesSelectorUrls()
    {
        const SelectorUrlHandler handler(cell("url"));
        const QStringList parts = {handler.getModuleName(), handler.getObjectName(),
                                   handler.getInstance(), handler.getUrlIncludingIndex()};
        QCOMPARE(parts.join(','), cell("parts"));
        QCOMPARE(handler.isValid(), cell("parts") != ",,,");
    }

    void refusesFaultyFiles_data()
    {
        addTable(R"(json                           | fault
        {\n  "configuration": {,}}             | :2:21: malformed JSON: found ',', expected a key
        []                                     | : expected an object, found an array
        {"configuraton": {}}                   | : configuraton: expected configuration, dynamic
        {"configuration": {"I": {}, "I": {}}}  | : the key configuration/I stands there twice
        {"": {}, "": {}}                       | : the key "" stands there twice
        {"dynamicTexts": {"I": {"U": []}}}     | : dynamicTexts/I/U: expected an object, found an
        {"configuration": {"I": {"M": {"K": [{"a": null}]}}}} | : configuration/I/M/K[0]/a: null is
        {"configuration": {"I": {"M": {"K": {"a": "b\u0000"}}}}} | : configuration/I/M/K/a: the bus carries no text
        {"dynamicTexts": {"I": {"U": {"K": {"L": DEEP}}}}} | : dynamicTexts/I/U/K/L%1: the bus carries no value of so
        {"statusDisplay": {"available": true}} | : statusDisplay/folder: expected a text, found not
        )");
    }
    void refusesFaultyFiles()
    {
        const LanguageFiles files;
        const QString deepList = QString(32, '[') + '7' + QString(32, ']');
        const QByteArray json = cell("json").replace("DEEP", deepList).toUtf8();
        files.write("device", json);
        const ToolRun run({files.file("device")}, {}, {}, DEVICE_SIMULATOR_PROGRAM);
        QCOMPARE(run.exitStatus(), 2);
        const QString message = "device-simulator: " + files.file("device") +
                                cell("fault").replace("%1", QString("[0]").repeated(32));
        QVERIFY2(run.messages().startsWith(message), qPrintable(run.messages()));
        QCOMPARE(files.read("device"), json);
    }

    void watches()
    {
        DeviceService device(DeviceService::withLanguage("\"Languages/de_DE\""));
        QProcess watch;
        startWatch(watch, m_Files.path(), qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
        QCOMPARE(nextAnswer(watch), "de_DE: de_DE");
        DeviceService::setLanguage("Languages/ja_JP");
        QCOMPARE(nextAnswer(watch), "ja_JP: ja_JP");
        m_Files.writeText("next", "new");
        std::rename(qPrintable(m_Files.file("next")), qPrintable(m_Files.file("ja_JP")));
        QCOMPARE(nextAnswer(watch), "ja_JP: new");
        m_Files.writeText("ja_JP", "newer");
        QCOMPARE(nextAnswer(watch), "ja_JP: newer");
        QVERIFY(endsAtOnce(watch));
        QVERIFY(watch.readAllStandardError().contains("the language is ja_JP."));
        QCOMPARE(ToolRun({"watch", m_Files.path(), "A", "A", "--once"}).output(),
                 "A\tnewer\nA\tnewer\n");

        startWatch(watch, m_Files.path(), qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
        QCOMPARE(nextAnswer(watch), "ja_JP: newer");
        QCOMPARE(device.end(SIGINT), 0);
        QByteArray messages;
        QTRY_VERIFY((messages += watch.readAllStandardError()).contains("has gone"));
        QVERIFY(endsAtOnce(watch));
        const QString untilNobodyReads = TEXTMANAGER_PROGRAM " watch DIR A | head -n 1";
        const ToolRun run({"-c", m_Files.fill(untilNobodyReads)}, {}, {}, "sh");
        QCOMPARE(run.output(), "en_US\n");
    }

    void isNotHeldUpByABusThatHangs()
    {
        QProcess watch;
        startWatch(watch, m_Files.path(), "unixexec:path=wc"); // takes calls, answers none
        QCOMPARE(nextAnswer(watch), ": en_US");
        QVERIFY(endsAtOnce(watch)); // while it still hangs
        QCOMPARE(watch.readAllStandardError().count("the device's bus is not there"), 1);
    }

private:
    const DeviceFiles m_Files;
};

QTEST_GUILESS_MAIN(DeviceLanguageTest)
#include "tst_device_language.moc"
