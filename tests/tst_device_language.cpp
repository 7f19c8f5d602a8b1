#include "DeviceService.h"
#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"
#include "WarningCapture.h"

#include "ConfigurationFileHandlerDBusConnector.h"
#include "SelectorUrlHandler.h"
#include "TextManager.h"

#include <QElapsedTimer>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <csignal>
#include <future>

namespace
{

using Connector = ConfigurationFileHandlerDBusConnector;

const QString invalidPointer = "Invalid pointer to connector!";
const QString readError = "Received error on reading configuration setting for language: \"";

/** The text A in each language, named by it, and one short text. */
class Languages : public LanguageFiles
{
public:
    Languages()
    {
        for (const QByteArray key : {"de_DE", "en_US", "fr_FR", "ja_JP"})
            write(key, R"({"Content": {"A": {"text": ")" + key + R"("}}})");
        write("short/de_DE", R"({"Content": {"A": {"text": "short"}}})");
    }
};

class ReachableTextManager : public TextManager
{
public:
    using TextManager::TextManager;
    using TextManagerBase::m_Mutex;
};

QString currentText(const TextManager& manager)
{
    return manager.getText("A", QString());
}

} // namespace

class DeviceLanguageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersWithoutAService();
    void readsTheLanguage_data();
    void readsTheLanguage();
    void followsTheSettings();
    void reloadsAlsoWhatCannotBeRead();
    void outlivesTheService();
    void isNotHeldUpByAServiceThatHangs();
    void followsInItsOwnThread();
    void describesItself();
    void readsAndStoresDynamicTexts();
    void parsesSelectorUrls_data();
    void parsesSelectorUrls();
    void changesNothingThatCannotBeStored();
    void refusesFaultyFiles_data();
    void refusesFaultyFiles();
    void watches();
};

void DeviceLanguageTest::answersWithoutAService()
{
    const Languages files;
    WarningCapture capture;
    const TextManager unnamed(files.path(), QString());
    QCOMPARE(capture.take(), QStringList({invalidPointer, invalidPointer}));
    QCOMPARE(unnamed.getLanguageName(), QString());
    QCOMPARE(currentText(unnamed), "en_US");

    const TextManager named(files.path(), "de_DE");
    QCOMPARE(capture.take(), QStringList(invalidPointer));
    QCOMPARE(named.getShortText("A", QString()), "de_DE"); // nobody told of a status display
}

void DeviceLanguageTest::readsTheLanguage_data()
{
    addTable(R"(value     | language | warning
        "Languages/de_DE" | de_DE    |
        "a/b/c"           | c        |
        "Languages/"      |          |
        7                 | 7        |
        true              | true     |
        null              |          | QVariant(Invalid)
        ["de_DE"]         |          | QVariant(QVariantList, (QVariant(QString, "de_DE")))
        {"a": [0.5]}      |          | QVariant(QVariantMap, QMap(("a", QVariant(QVariantList, (QVariant(double, 0.5))))))
    )");
}

void DeviceLanguageTest::readsTheLanguage()
{
    DeviceService device(DeviceService::withLanguage(cell("value").toUtf8()));
    device.startService();
    WarningCapture capture;
    const TextManager manager{QString(), QString()};
    QCOMPARE(manager.getLanguageName(), cell("language"));
    const QString warning = "Error on converting language name to string: %1 !";
    QCOMPARE(capture.take(),
             cell("warning").isEmpty() ? QStringList() : QStringList(warning.arg(cell("warning"))));
}

void DeviceLanguageTest::followsTheSettings()
{
    const Languages files;
    DeviceService device(DeviceService::withLanguage("\"Languages/de_DE\""));
    device.startService();
    const TextManager manager(files.path(), QString());
    QSignalSpy reloads(&manager, &TextManager::languageReloaded);
    QCOMPARE(manager.getShortText("A", QString()), "short");

    // In their turn: the one that is followed shows that the ones before it were not. All come
    // before the event loop runs, and are not lost.
    DeviceService::tell("announceConfigurationChange", {"string:devicesettings/devicesettings"});
    DeviceService::setLanguage("Languages/de_DE"); // no change
    DeviceService::setLanguage("Languages/ja_JP");
    QVERIFY(reloads.wait());
    QCOMPARE(currentText(manager), "ja_JP");
    DeviceService::tell("announceConfigurationDataChange");
    QVERIFY(reloads.wait());
    QCOMPARE(reloads.size(), 2);
}

void DeviceLanguageTest::reloadsAlsoWhatCannotBeRead()
{
    DeviceService device(R"({"statusDisplay": {"available": false, "folder": "short"}})");
    device.startService();
    const Languages files;
    WarningCapture capture;
    const TextManager manager(files.path(), "de_DE");
    QCOMPARE(capture.take(), QStringList()); // not asked for the language
    QCOMPARE(manager.getShortText("A", QString()), "de_DE");

    QSignalSpy reloads(&manager, &TextManager::languageReloaded);
    DeviceService::tell("announceConfigurationDataChange");
    QVERIFY(reloads.wait());
    QCOMPARE(manager.getLanguageName(), QString());
    QCOMPARE(capture.take(),
             QStringList(readError + "There is no entry configuration > "
                                     "DeviceSettings/DeviceSettings > TextManager > Language\""));
}

void DeviceLanguageTest::outlivesTheService()
{
    const Languages files;
    DeviceService device(DeviceService::withLanguage("\"de_DE\""));
    device.startService();
    TextManager manager(files.path(), QString());
    QSignalSpy reloads(&manager, &TextManager::languageReloaded);

    device.end(SIGKILL);
    WarningCapture capture;
    QCOMPARE(manager.retrieveLanguageName(), QString());
    const QStringList warnings = capture.take();
    QVERIFY2(warnings.size() == 1 && warnings.first().startsWith(readError),
             qPrintable(warnings.join('\n')));
    QCOMPARE(currentText(manager), "de_DE");

    device.write(DeviceService::withLanguage("\"fr_FR\""));
    device.startService();
    QVERIFY(reloads.wait()); // its return is a change
    QCOMPARE(currentText(manager), "fr_FR");
    DeviceService::setLanguage("ja_JP");
    QVERIFY(reloads.wait());
    QCOMPARE(currentText(manager), "ja_JP");
}

void DeviceLanguageTest::isNotHeldUpByAServiceThatHangs()
{
    const Languages files;
    DeviceService device(DeviceService::withLanguage("\"de_DE\""));
    device.startService();
    ReachableTextManager manager(files.path(), QString());
    WarningCapture capture;
    QElapsedTimer timer;

    device.send(SIGSTOP);
    timer.start();
    auto language = std::async(std::launch::async, [&] { return manager.retrieveLanguageName(); });
    QTRY_VERIFY(!manager.m_Mutex.tryLock() || (manager.m_Mutex.unlock(), false)); // held meanwhile
    QCOMPARE(currentText(manager), "de_DE");
    QCOMPARE(language.get(), QString());
    const TextManager another(files.path(), QString());
    QCOMPARE(currentText(another), "en_US");
    QVERIFY2(timer.elapsed() < 6000, qPrintable(QString::number(timer.elapsed()))); // three calls
    QCOMPARE(capture.take().size(), 2);

    device.send(SIGCONT);
    QCOMPARE(manager.retrieveLanguageName(), "de_DE");
}

void DeviceLanguageTest::followsInItsOwnThread()
{
    DeviceService device(DeviceService::withLanguage("\"de_DE\""));
    device.startService();
    auto manager = std::make_unique<TextManager>(QString(), QString());
    QThread thread;
    thread.start();
    manager->moveToThread(&thread); // its connector stays behind
    QObject::connect(&thread, &QThread::finished, manager.get(), [&] { manager.reset(); });

    std::atomic<QThread*> reloadedIn{nullptr};
    QObject::connect(manager.get(), &TextManager::languageReloaded, manager.get(),
                     [&] { reloadedIn = QThread::currentThread(); });
    DeviceService::setLanguage("fr_FR");
    QTRY_COMPARE(reloadedIn.load(), &thread);
    thread.quit();
    QVERIFY(thread.wait());
    QVERIFY(!manager);
}

void DeviceLanguageTest::describesItself()
{
    const QMetaObject& meta = TextManager::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        methods << method.methodSignature() + (method.access() == QMetaMethod::Public ? "+" : "-") +
                       method.parameterNames().join();
    }
    QCOMPARE(methods, QStringList({"configurationChanged()+",
                                   "deviceManagerConfigurationChanged(QString)-strInstanceName"}));
}

void DeviceLanguageTest::readsAndStoresDynamicTexts()
{
    DeviceService device(R"({"dynamicTexts": {"I": {"U[1]": {"Device": {"de_DE": "Ä"}}}}})");
    QVERIFY(!Connector::createAndConnect("DeviceManager", "Configuration"));
    device.startService();
    QVERIFY(!Connector::createAndConnect("no module", "Configuration"));
    const auto connector = Connector::createAndConnect("DeviceManager", "Configuration");
    DBusReply reply;
    QVERIFY(reply.isError());
    std::thread([&] { reply = connector->getDynamicText("I", "U[1]", "Device", "de_DE"); }).join();
    QVERIFY(!reply.isError());
    QCOMPARE(reply.getValue(), "Ä");

    QSignalSpy changes(connector.data(), &Connector::configurationDataChanged);
    DeviceService::tell("setDynamicText", {"string:I", "string:U", "string:Device", "string:ja_JP",
                                           "variant:string:夜"});
    QVERIFY(changes.wait());
    QCOMPARE(device.end(SIGINT), 0);
    device.startService(); // it reads what it wrote
    QCOMPARE(connector->getDynamicText("I", "U", "Device", "ja_JP").getValue(), "夜");
    QCOMPARE(connector->getDynamicText("I", "U[1]", "Device", "de_DE").getValue(), "Ä");
}

void DeviceLanguageTest::parsesSelectorUrls_data()
{
    addTable(R"(url            | parts
        DM:Conf:In/st:Pfad ä   | DM,Conf,In/st,Pfad ä
        DM:Conf:Inst:Pa/th[12] | DM,Conf,Inst,Pa/th[12]
                               | ,,,
        DM:Conf:Inst           | ,,,
        DM::Inst:Path          | ,,,
        D.M:Conf:Inst:Path     | ,,,
        DM:Conf:In//st:Path    | ,,,
        DM:Conf:Inst:Path[x]   | ,,,
        DM:Conf:Inst:Path:more | ,,,
    )");
}

void DeviceLanguageTest::parsesSelectorUrls()
{
    const SelectorUrlHandler handler(cell("url"));
    const QStringList parts = {handler.getModuleName(), handler.getObjectName(),
                               handler.getInstance(), handler.getUrlIncludingIndex()};
    QCOMPARE(parts.join(','), cell("parts"));
    QCOMPARE(handler.isValid(), cell("parts") != ",,,");
}

void DeviceLanguageTest::changesNothingThatCannotBeStored()
{
    DeviceService device(DeviceService::withLanguage("\"de_DE\""));
    device.startService();
    TextManager manager{QString(), QString()};
    device.removeFolder();
    const QString answer = DeviceService::setLanguage("ja_JP");
    QVERIFY2(answer.contains("Interface.Configuration.Error.NotStored"), qPrintable(answer));
    QCOMPARE(manager.retrieveLanguageName(), "de_DE");
}

void DeviceLanguageTest::refusesFaultyFiles_data()
{
    addTable(R"(json                           | fault
        {\n  "configuration": {,}}             | :2:21: malformed JSON: syntax error while parsing object key
        []                                     | : expected an object, found an array
        {"configuraton": {}}                   | : configuraton: expected configuration, dynamicTexts or
        {"dynamicTexts": {"I": {"U": []}}}     | : dynamicTexts/I/U: expected an object, found an array
        {"configuration": {"I": {"M": {"K": [{"a": null}]}}}} | : configuration/I/M/K[0]/a: null is
        {"statusDisplay": {"available": true}} | : statusDisplay/folder: expected a string, found nothing
    )");
}

void DeviceLanguageTest::refusesFaultyFiles()
{
    const QByteArray json = cell("json").toUtf8();
    const DeviceService device(json);
    const ToolRun run({device.file()}, {}, {}, DEVICE_SIMULATOR_PROGRAM);
    QCOMPARE(run.exitStatus(), 2);
    QVERIFY2(run.messages().startsWith("device-simulator: " + device.file() + cell("fault")),
             qPrintable(run.messages()));
    QCOMPARE(device.read(), json);
}

void DeviceLanguageTest::watches()
{
    const Languages files;
    DeviceService device(DeviceService::withLanguage("\"Languages/de_DE\""));
    device.startService();
    QProcess watch;
    const auto nextLine = [&] {
        while (!watch.canReadLine() && watch.waitForReadyRead()) {
        }
        return watch.readLine();
    };
    watch.start(TEXTMANAGER_PROGRAM, {"watch", files.path(), "A", "--format", "json"});
    const QByteArray json = R"({"currentLanguage":"%1","found":true,"text":"%1","url":"A"})"
                            "\n";
    QCOMPARE(nextLine(), QByteArray(json).replace("%1", "de_DE"));
    DeviceService::setLanguage("Languages/ja_JP");
    QCOMPARE(nextLine(), QByteArray(json).replace("%1", "ja_JP"));
    watch.terminate();
    QVERIFY(watch.waitForFinished());
    QCOMPARE(watch.exitCode(), watch.exitStatus() == QProcess::NormalExit ? 0 : -1);

    // The session bus is there, but another one is chosen; and a full disk ends the watch.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TEXTMANAGER_BUS", "system");
    environment.insert("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere");
    watch.setProcessEnvironment(environment);
    watch.setStandardOutputFile("/dev/full");
    watch.start(TEXTMANAGER_PROGRAM, {"watch", files.path(), "A", "--language", "de_DE"});
    QVERIFY(watch.waitForFinished());
    QCOMPARE(watch.exitCode(), 2);
    QCOMPARE(watch.readAllStandardError(),
             QByteArray("textmanager: Invalid pointer to connector!\n"
                        "textmanager: cannot write the result: No space left on device\n"));
}

QTEST_GUILESS_MAIN(DeviceLanguageTest)
#include "tst_device_language.moc"
