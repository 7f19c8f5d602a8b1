#include "DeviceService.h"
#include "LanguageFiles.h"
#include "PrivateBus.h"
#include "Table.h"
#include "ToolRun.h"
#include "WarningCapture.h"

#include "ConfigurationFileHandlerDBusConnector.h"
#include "SelectorUrlHandler.h"
#include "TextManager.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMetaMethod>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <future>
#include <thread>

namespace
{

using Connector = ConfigurationFileHandlerDBusConnector;

const QString invalidPointer = "Invalid pointer to connector!";
const QString readError = "Received error on reading configuration setting for language: \"";
const QString noService = readError + "The service Device.DeviceManager is not on the bus\"";

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

/** A service, on a connection of its own, that has its name before its object. */
class HastyService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "Interface.Configuration")

public:
    HastyService()
        : m_Bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "hasty"))
    {
        m_Bus.registerService("Device.DeviceManager");
        moveToThread(&m_Thread);
        m_Thread.start();
    }
    ~HastyService() override
    {
        m_Thread.quit();
        m_Thread.wait();
        QDBusConnection::disconnectFromBus("hasty");
    }
    void publishObject()
    {
        m_Bus.registerObject("/Configuration", this, QDBusConnection::ExportAllSlots);
    }

public Q_SLOTS:
    QDBusVariant getConfigurationElementValue(QString, QString, QString)
    {
        return QDBusVariant("ja_JP");
    }

private:
    QDBusConnection m_Bus;
    QThread m_Thread;
};

/** A signal of somebody who does not own the name. */
void announceAsStranger(const QStringList& words)
{
    const ToolRun run(QStringList({"--session", "--type=signal"}) + words, {}, {}, "dbus-send");
    QCOMPARE(run.exitStatus(), 0);
}

/** Makes the service announce changes, faster than a process for each could. */
void announceChanges(int count)
{
    const QDBusMessage call = QDBusMessage::createMethodCall(
        "Device.DeviceManager", "/Configuration", "Interface.DeviceSimulator",
        "announceConfigurationDataChange");
    for (; count > 1; --count)
        QDBusConnection::sessionBus().send(call);
    QDBusConnection::sessionBus().call(call);
}

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

class DeviceLanguageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void answersWithoutAService();
    void answersWithoutABus();
    void followsWhateverComesLate_data();
    void followsWhateverComesLate();
    void asksAHastyServiceAgain();
    void readsTheManifestFile_data();
    void readsTheManifestFile();
    void readsTheLanguage_data();
    void readsTheLanguage();
    void followsTheSettings();
    void outlivesTheService();
    void tellsABurstOnce();
    void isNotHeldUpByAServiceThatHangs();
    void isNotHeldUpByABusThatHangs();
    void isNotHeldUpByABusThatStops();
    void describesItself();
    void readsAndStoresDynamicTexts();
    void parsesSelectorUrls_data();
    void parsesSelectorUrls();
    void refusesFaultyFiles_data();
    void refusesFaultyFiles();
    void watches();

private:
    PrivateBus m_Bus;
    const LanguageFiles m_Files{}; ///< the text A in four languages, named by them, and a short one
};

void DeviceLanguageTest::initTestCase()
{
    for (const QByteArray key : {"de_DE", "en_US", "fr_FR", "ja_JP"})
        m_Files.write(key, R"({"Content": {"A": {"text": ")" + key + R"("}}})");
    m_Files.write("short/de_DE", R"({"Content": {"A": {"text": "short"}}})");
    // Without a status display a text manager looks there for short texts.
    QVERIFY(QDir::setCurrent(m_Files.path() + "short"));
}

void DeviceLanguageTest::answersWithoutAService()
{
    WarningCapture capture;
    const TextManager unnamed(m_Files.path(), QString());
    QCOMPARE(capture.take(), QStringList(noService));
    QCOMPARE(unnamed.getLanguageName(), QString());
    QCOMPARE(currentText(unnamed), "en_US");

    const TextManager named(m_Files.path(), "de_DE");
    QCOMPARE(capture.take(), QStringList());
    QCOMPARE(currentText(named), "de_DE");

    const LanguageFiles faulty; // it warns each time that it is read, which is once
    faulty.write("de_DE", "{}");
    const TextManager loaded(faulty.path(), "de_DE");
    QCOMPARE(capture.take().filter("No 'Content'-key found").size(), 1);
}

void DeviceLanguageTest::answersWithoutABus()
{
    m_Bus.stop();
    WarningCapture capture;
    const TextManager unnamed(m_Files.path(), QString());
    QCOMPARE(capture.take(), QStringList({invalidPointer, invalidPointer}));
    QCOMPARE(currentText(unnamed), "en_US");
    m_Bus.start();
}

void DeviceLanguageTest::followsWhateverComesLate_data()
{
    addTable(R"(what
        service
        service again
        bus again
        connection again
    )");
}

void DeviceLanguageTest::followsWhateverComesLate()
{
    const QByteArray json = DeviceService::withLanguage("\"ja_JP\"");
    DeviceService device(json);
    if (cell("what") == "service")
        device.end(SIGKILL);
    WarningCapture capture;
    TextManager manager(m_Files.path(), QString());
    QSignalSpy reloads(&manager, &TextManager::languageReloaded);
    const auto connector = Connector::createAndConnect("DeviceManager", "Configuration");

    if (cell("what") == "bus again") {
        m_Bus.stop();
        device.waitForFinished();
        QCOMPARE(device.exitCode(), 2);
        QVERIFY(device.readAllStandardError().contains("the bus ended the connection"));
        m_Bus.start();
    }
    if (cell("what") == "connection again") {
        QVERIFY(connector->getDynamicText(QString(200'000, 'x'), "U", "K", "L").isError());
        DeviceService::setLanguage("fr_FR"); // perhaps before it is subscribed to again
        QTRY_COMPARE(currentText(manager), "fr_FR");
    } else {
        QTest::qWait(200); // nothing is told before there is a service to be asked
        QCOMPARE(reloads.size(), 0);
        device.end(SIGKILL);
        device.restart(DeviceService::withLanguage("\"de_DE\""));
        QVERIFY(reloads.wait());
        QCOMPARE(currentText(manager), "de_DE");
    }
    DeviceService::setLanguage("Languages/en_US");
    QTRY_COMPARE(currentText(manager), "en_US");
}

void DeviceLanguageTest::asksAHastyServiceAgain()
{
    WarningCapture capture;
    HastyService service;
    TextManager manager(m_Files.path(), QString());
    QSignalSpy reloads(&manager, &TextManager::languageReloaded);
    QVERIFY(!reloads.wait(300)); // not before it can be read
    service.publishObject();
    QVERIFY(reloads.wait());
    QCOMPARE(currentText(manager), "ja_JP");
}

void DeviceLanguageTest::readsTheManifestFile_data()
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

void DeviceLanguageTest::readsTheManifestFile()
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

void DeviceLanguageTest::readsTheLanguage_data()
{
    addTable(R"(value | language | warning
        "a/b/c"       | c        |
        "Languages/"  |          |
        7             | 7        |
        null          |          | QVariant(QVariantList, ())
        {"a": [0.5]}  |          | QVariant(QVariantMap, QMap(("a", QVariant(QVariantList, (QVariant(double, 0.5))))))
    )");
}

void DeviceLanguageTest::readsTheLanguage()
{
    DeviceService device(DeviceService::withLanguage(cell("value").toUtf8()));
    WarningCapture capture;
    const TextManager manager{QString(), QString()};
    QCOMPARE(manager.getLanguageName(), cell("language"));
    QStringList warnings("Error on converting language name to string: " + cell("warning") + " !");
    QCOMPARE(capture.take(), cell("warning").isEmpty() ? QStringList() : warnings);
}

void DeviceLanguageTest::followsTheSettings()
{
    DeviceService device(DeviceService::withLanguage("\"Languages/de_DE\""));
    TextManager manager(m_Files.path(), QString());
    QSignalSpy reloads(&manager, &TextManager::languageReloaded);
    QCOMPARE(manager.getShortText("A", QString()), "short");

    announceAsStranger({"/Configuration", "Interface.Configuration.configurationDataChanged"});
    announceAsStranger({"/org/freedesktop/DBus", "org.freedesktop.DBus.NameOwnerChanged",
                        "string:Device.DeviceManager", "string:", "string::1.999"});
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

void DeviceLanguageTest::outlivesTheService()
{
    DeviceService device(R"({"statusDisplay": {"available": false, "folder": "short"}})");
    WarningCapture capture;
    TextManager manager(m_Files.path(), "de_DE");
    QCOMPARE(capture.take(), QStringList()); // not asked for the language
    QCOMPARE(manager.getShortLanguageFilepath(), QString());
    QSignalSpy reloads(&manager, &TextManager::languageReloaded);

    device.end(SIGKILL);
    QCOMPARE(manager.retrieveLanguageName(), QString());
    const QStringList warnings = capture.take();
    QVERIFY(warnings.size() == 1 && warnings.first().startsWith(readError));
    QCOMPARE(currentText(manager), "de_DE");

    device.restart();
    QVERIFY(reloads.wait()); // its return is a change, though it has no language
    QCOMPARE(manager.getLanguageName(), QString());
    QCOMPARE(capture.take(),
             QStringList(readError + "There is no entry configuration > "
                                     "DeviceSettings/DeviceSettings > TextManager > Language\""));
    DeviceService::setLanguage("ja_JP");
    QVERIFY(reloads.wait());
    QCOMPARE(currentText(manager), "ja_JP");
}

void DeviceLanguageTest::tellsABurstOnce()
{
    DeviceService device(DeviceService::withLanguage("\"de_DE\""));
    const TextManager manager(m_Files.path(), QString());
    QSignalSpy reloads(&manager, &TextManager::languageReloaded);
    announceChanges(500);
    DeviceService::setLanguage("ja_JP");
    QVERIFY(reloads.wait());
    QCOMPARE(currentText(manager), "ja_JP");
    QVERIFY(!reloads.wait(100));
    QCOMPARE(reloads.size(), 2); // one for each of the two signals of the service
}

void DeviceLanguageTest::isNotHeldUpByAServiceThatHangs()
{
    DeviceService device(DeviceService::withLanguage("\"de_DE\""));
    ReachableTextManager manager(m_Files.path(), QString());
    WarningCapture capture;
    QElapsedTimer timer;

    device.send(SIGSTOP);
    timer.start();
    auto language = std::async(std::launch::async, [&] { return manager.retrieveLanguageName(); });
    QTRY_VERIFY(!manager.m_Mutex.tryLock() || (manager.m_Mutex.unlock(), false)); // held meanwhile
    QCOMPARE(currentText(manager), "de_DE");
    QCOMPARE(language.get(), QString());
    const TextManager another(m_Files.path(), QString());
    QCOMPARE(manager.retrieveLanguageName(), QString());
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed()))); // one wait
    QCOMPARE(capture.take().size(), 3);

    QSignalSpy reloads(&manager, &TextManager::languageReloaded);
    device.send(SIGCONT);
    QVERIFY(reloads.wait()); // it is asked again, though it has announced nothing
    QCOMPARE(manager.getLanguageName(), "de_DE");
}

void DeviceLanguageTest::isNotHeldUpByABusThatHangs()
{
    QProcess watch;
    startWatch(watch, m_Files.path(), "unixexec:path=wc"); // takes calls, answers none
    QCOMPARE(nextAnswer(watch), ": en_US");
    QVERIFY(endsAtOnce(watch)); // while it still hangs
    QCOMPARE(watch.readAllStandardError().count("the device's bus is not there"), 1);
}

void DeviceLanguageTest::isNotHeldUpByABusThatStops()
{
    DeviceService device(DeviceService::withLanguage("\"de_DE\""));
    QVERIFY(!Connector::createAndConnect("DeviceManager", "Configuration").isNull());
    WarningCapture capture;
    QElapsedTimer timer;
    m_Bus.send(SIGSTOP);
    timer.start();
    const TextManager manager(m_Files.path(), QString());
    m_Bus.send(SIGCONT);
    QVERIFY2(timer.elapsed() < 6000 * TIME_FACTOR, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE(manager.getLanguageName(), "de_DE");
}

void DeviceLanguageTest::describesItself()
{
    const QMetaObject& meta = TextManager::staticMetaObject;
    QCOMPARE(meta.methodCount(), meta.methodOffset() + 2);
    const QMetaMethod slot =
        meta.method(meta.indexOfSlot("deviceManagerConfigurationChanged(QString)"));
    QCOMPARE(slot.parameterNames(), QList<QByteArray>{"strInstanceName"});
    QCOMPARE(slot.access(), QMetaMethod::Private);
}

void DeviceLanguageTest::readsAndStoresDynamicTexts()
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

void DeviceLanguageTest::parsesSelectorUrls_data()
{
    addTable(R"(url                | parts
        DM:Conf:In/st:Pfad ä/x[12] | DM,Conf,In/st,Pfad ä/x[12]
        DM::Inst:Path              | ,,,
        D.M:Conf:Inst:Path         | ,,,
        DM:Conf:In//st:Path        | ,,,
        DM:Conf:Inst:Path[x]       | ,,,
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

void DeviceLanguageTest::refusesFaultyFiles_data()
{
    addTable(R"(json                           | fault
        {\n  "configuration": {,}}             | :2:21: malformed JSON: found ',', expected a key
        []                                     | : expected an object, found an array
        {"configuraton": {}}                   | : configuraton: expected configuration, dynamic
        {"configuration": {"I": {}, "I": {}}}  | : the key configuration/I stands there twice
        {"": {}, "": {}}                       | : the key "" stands there twice
        7                                      | :1:1: malformed JSON: found a value alone
        {"dynamicTexts": {"I": {"U": []}}}     | : dynamicTexts/I/U: expected an object, found an
        {"configuration": {"I": {"M": {"K": [{"a": null}]}}}} | : configuration/I/M/K[0]/a: null is
        {"configuration": {"I": {"M": {"K": {"a": "b\u0000"}}}}} | : configuration/I/M/K/a: the bus carries no text
        {"dynamicTexts": {"I": {"U": {"K": {"L": DEEP}}}}} | : dynamicTexts/I/U/K/L%1: the bus carries no value of so
        {"statusDisplay": {"available": true}} | : statusDisplay/folder: expected a text, found not
    )");
}

void DeviceLanguageTest::refusesFaultyFiles()
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
    QFile file(files.file("device"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), json);
}

void DeviceLanguageTest::watches()
{
    DeviceService device(DeviceService::withLanguage("\"Languages/de_DE\""));
    QProcess watch;
    startWatch(watch, m_Files.path(), qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
    QCOMPARE(nextAnswer(watch), "de_DE: de_DE");
    DeviceService::setLanguage("Languages/ja_JP");
    QCOMPARE(nextAnswer(watch), "ja_JP: ja_JP");
    m_Files.write("next", R"({"Content": {"A": {"text": "new"}}})");
    m_Files.remove("ja_JP");
    QVERIFY(QFile::rename(m_Files.file("next"), m_Files.file("ja_JP")));
    QCOMPARE(nextAnswer(watch), "ja_JP: new");
    m_Files.write("ja_JP", R"({"Content": {"A": {"text": "newer"}}})");
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
    const QString untilNobodyReads = QString("'%1' watch '%2' A | head -n 1");
    const ToolRun run({"-c", untilNobodyReads.arg(TEXTMANAGER_PROGRAM, m_Files.path())}, {}, {},
                      "sh");
    QCOMPARE(run.output(), "en_US\n");
}

QTEST_GUILESS_MAIN(DeviceLanguageTest)
#include "tst_device_language.moc"
