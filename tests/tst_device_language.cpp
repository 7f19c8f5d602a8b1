#include "DeviceService.h"
#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"
#include "WarningCapture.h"

#include "ConfigurationFileHandlerDBusConnector.h"
#include "SelectorUrlHandler.h"
#include "TextManager.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMetaMethod>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <future>
#include <thread>

namespace
{

using Connector = ConfigurationFileHandlerDBusConnector;

const QString invalidPointer = "Invalid pointer to connector!";
const QString readError = "Received error on reading configuration setting for language: \"";

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
    while (!watch.canReadLine() && watch.waitForReadyRead(10'000)) {
    }
    const QJsonObject answer = parseObject(watch.readLine());
    return answer["currentLanguage"].toString() + ": " + answer["text"].toString();
}

bool endsAtOnce(QProcess& watch)
{
    watch.terminate();
    return watch.waitForFinished(10'000) && watch.exitStatus() == QProcess::NormalExit &&
           watch.exitCode() == 0;
}

} // namespace

class DeviceLanguageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void answersWithoutAService();
    void readsTheLanguage_data();
    void readsTheLanguage();
    void followsTheSettings();
    void outlivesTheService();
    void isNotHeldUpByAServiceThatHangs();
    void isNotHeldUpByABusThatHangs();
    void describesItself();
    void readsAndStoresDynamicTexts();
    void parsesSelectorUrls_data();
    void parsesSelectorUrls();
    void refusesFaultyFiles_data();
    void refusesFaultyFiles();
    void watches();

private:
    const LanguageFiles m_Files; ///< the text A in four languages, named by them, and a short one
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
    QCOMPARE(capture.take(), QStringList({invalidPointer, invalidPointer}));
    QCOMPARE(unnamed.getLanguageName(), QString());
    QCOMPARE(currentText(unnamed), "en_US");

    const TextManager named(m_Files.path(), "de_DE");
    QCOMPARE(capture.take(), QStringList(invalidPointer));
    QCOMPARE(currentText(named), "de_DE");
}

void DeviceLanguageTest::readsTheLanguage_data()
{
    addTable(R"(value | language | warning
        "a/b/c"       | c        |
        "Languages/"  |          |
        7             | 7        |
        null          |          | QVariant(Invalid)
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

    // In their turn: the one that is followed shows that the ones before it were not. All come
    // before the event loop runs, and are not lost.
    DeviceService::tell("announceConfigurationChange", {"string:devicesettings/devicesettings"});
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
    DeviceService::tell("announceConfigurationDataChange");
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
    QVERIFY2(timer.elapsed() < 6000, qPrintable(QString::number(timer.elapsed()))); // three calls
    QCOMPARE(capture.take().size(), 2);

    device.send(SIGCONT);
    QCOMPARE(manager.retrieveLanguageName(), "de_DE");
}

void DeviceLanguageTest::isNotHeldUpByABusThatHangs()
{
    QProcess watch;
    startWatch(watch, m_Files.path(), "unixexec:path=wc"); // takes calls, answers none
    QCOMPARE(nextAnswer(watch), ": en_US");
    QVERIFY(endsAtOnce(watch)); // while it still hangs
    QCOMPARE(watch.readAllStandardError().count("service of the device is not on the bus"), 1);
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
        return DeviceService::tell("setDynamicText", {"string:I", "string:U", "string:Device",
                                                      "string:ja_JP", "variant:" + value});
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
        {\n  "configuration": {,}}             | :2:21: malformed JSON: syntax error while parsing
        []                                     | : expected an object, found an array
        {"configuraton": {}}                   | : configuraton: expected configuration, dynamic
        {"configuration": {"I": {}, "I": {}}}  | : the key configuration/I stands there twice
        {"": {}, "": {}}                       | : the key "" stands there twice
        7                                      | :1:1: malformed JSON: found a number
        {"dynamicTexts": {"I": {"U": []}}}     | : dynamicTexts/I/U: expected an object, found an
        {"configuration": {"I": {"M": {"K": [{"a": null}]}}}} | : configuration/I/M/K[0]/a: null is
        {"statusDisplay": {"available": true}} | : statusDisplay/folder: expected a text, found not
    )");
}

void DeviceLanguageTest::refusesFaultyFiles()
{
    const LanguageFiles files;
    const QByteArray json = cell("json").toUtf8();
    files.write("device", json);
    const ToolRun run({files.file("device")}, {}, {}, DEVICE_SIMULATOR_PROGRAM);
    QCOMPARE(run.exitStatus(), 2);
    const QString message = "device-simulator: " + files.file("device") + cell("fault");
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
    watch.closeReadChannel(QProcess::StandardOutput); // as whoever reads it when it ends
    QVERIFY(watch.waitForFinished(10'000));
}

QTEST_GUILESS_MAIN(DeviceLanguageTest)
#include "tst_device_language.moc"
