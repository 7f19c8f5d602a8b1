#include "DeviceService.h"
#include "LanguageFiles.h"
#include "Table.h"
#include "WarningCapture.h"

#include "TextManager.h"

#include <QElapsedTimer>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <future>

namespace
{

const QString invalidPointer = "Invalid pointer to connector!";
const QString readError = "Received error on reading configuration setting for language: \"%1\"";

/** The text A in four languages, named by it, and short in one of them. */
class Languages : public LanguageFiles
{
public:
    Languages()
    {
        for (const char* key : {"de_DE", "en_US", "fr_FR", "ja_JP"})
            write(key, R"({"Content": {"A": {"text": ")" + QByteArray(key) + R"("}}})");
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

/** Whether nothing was reloaded but what the device announces now. */
bool isReloadedOnce(const TextManager& manager, const QString& announcement)
{
    QSignalSpy reloads(&manager, &TextManager::languageReloaded);
    DeviceService::tell(announcement);
    return reloads.wait() && reloads.size() == 1;
}

} // namespace

class TextManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersWithoutAService();
    void readsTheLanguage_data();
    void readsTheLanguage();
    void followsTheSettings();
    void followsFromALanguageOfItsOwn();
    void reloadsWhatCannotBeRead();
    void outlivesTheService();
    void isNotHeldUpByAServiceThatHangs();
    void followsInItsOwnThread();
    void describesItself();
};

void TextManagerTest::answersWithoutAService()
{
    const Languages files;
    WarningCapture capture;
    TextManager unnamed(files.path(), QString());
    QCOMPARE(capture.take(), QStringList({invalidPointer, invalidPointer}));
    QCOMPARE(unnamed.getLanguageName(), QString());
    QCOMPARE(currentText(unnamed), "en_US");
    QCOMPARE(TextManager::getSmallFolder(), QString());

    TextManager named(files.path(), "de_DE");
    QCOMPARE(capture.take(), QStringList(invalidPointer));
    QCOMPARE(currentText(named), "de_DE");
    QCOMPARE(named.getShortText("A", QString()), "de_DE");
    named.configurationChanged();
    QCOMPARE(capture.take(), QStringList(invalidPointer));
    QCOMPARE(currentText(named), "en_US");
}

void TextManagerTest::readsTheLanguage_data()
{
    addTable(R"(value             | language | warning
        "Languages/de_DE"         | de_DE    |
        "a/b/c"                   | c        |
        "de_DE"                   | de_DE    |
        "Languages/"              |          |
        7                         | 7        |
        true                      | true     |
        null                      |          | QVariant(Invalid)
        ["de_DE"]                 |          | QVariant(QVariantList, (QVariant(QString, "de_DE")))
        {"a": [1]}                |          | QVariant(QVariantMap, QMap(("a", QVariant(QVariantList, (QVariant(qlonglong, 1))))))
    )");
}

void TextManagerTest::readsTheLanguage()
{
    DeviceService device(DeviceService::withLanguage(cell("value").toUtf8()));
    device.start();
    WarningCapture capture;
    const TextManager manager{QString(), QString()};
    QCOMPARE(manager.getLanguageName(), cell("language"));
    const QString warning = cell("warning");
    QCOMPARE(capture.take(),
             warning.isEmpty()
                 ? QStringList()
                 : QStringList("Error on converting language name to string: " + warning + " !"));
}

void TextManagerTest::followsTheSettings()
{
    const Languages files;
    DeviceService device(DeviceService::withLanguage("\"Languages/de_DE\""));
    device.start();
    const TextManager manager(files.path(), QString());
    QSignalSpy reloads(&manager, &TextManager::languageReloaded);
    QCOMPARE(currentText(manager), "de_DE");
    QCOMPARE(manager.getShortText("A", QString()), "short");

    // Each in its turn: the one that is followed shows that the ones before it were not.
    DeviceService::tell("announceConfigurationChange", {"string:Other/Other"});
    DeviceService::tell("announceConfigurationChange", {"string:devicesettings/devicesettings"});
    DeviceService::setLanguage("Languages/de_DE"); // no change
    DeviceService::setLanguage("Languages/ja_JP");
    QVERIFY(reloads.wait());
    QCOMPARE(currentText(manager), "ja_JP");
    QVERIFY(isReloadedOnce(manager, "announceConfigurationDataChange"));
    QCOMPARE(reloads.size(), 2);
}

void TextManagerTest::followsFromALanguageOfItsOwn()
{
    const Languages files;
    DeviceService device(DeviceService::withLanguage("null"));
    device.start();
    WarningCapture capture;
    const TextManager manager(files.path(), "fr_FR");
    QCOMPARE(capture.take(), QStringList()); // the service was not asked
    QCOMPARE(currentText(manager), "fr_FR");

    // Set before the event loop has run: what comes between reading and hearing is not lost.
    QSignalSpy reloads(&manager, &TextManager::languageReloaded);
    DeviceService::setLanguage("ja_JP");
    QVERIFY(reloads.wait());
    QCOMPARE(currentText(manager), "ja_JP");
}

void TextManagerTest::reloadsWhatCannotBeRead()
{
    const Languages files;
    DeviceService device("{}");
    device.start();
    WarningCapture capture;
    const TextManager manager(files.path(), "de_DE");
    QVERIFY(isReloadedOnce(manager, "announceConfigurationDataChange"));
    QCOMPARE(manager.getLanguageName(), QString());
    QCOMPARE(capture.take(),
             QStringList(readError.arg("There is no entry configuration > "
                                       "DeviceSettings/DeviceSettings > TextManager > Language")));
}

void TextManagerTest::outlivesTheService()
{
    const Languages files;
    DeviceService device(DeviceService::withLanguage("\"de_DE\""));
    device.start();
    TextManager manager(files.path(), QString());
    QSignalSpy reloads(&manager, &TextManager::languageReloaded);

    device.kill();
    QCOMPARE(currentText(manager), "de_DE");
    WarningCapture capture;
    QCOMPARE(manager.retrieveLanguageName(), QString());
    const QStringList warnings = capture.take();
    QCOMPARE(warnings.size(), 1);
    QVERIFY2(warnings.first().startsWith(readError.section('"', 0, 0)),
             qPrintable(warnings.first()));
    QCOMPARE(currentText(manager), "de_DE");

    device.write(DeviceService::withLanguage("\"fr_FR\""));
    device.start();
    QVERIFY(reloads.wait()); // its return is a change
    QCOMPARE(currentText(manager), "fr_FR");
    DeviceService::setLanguage("ja_JP");
    QVERIFY(reloads.wait());
    QCOMPARE(currentText(manager), "ja_JP");
}

void TextManagerTest::isNotHeldUpByAServiceThatHangs()
{
    const Languages files;
    DeviceService device(DeviceService::withLanguage("\"de_DE\""));
    device.start();
    ReachableTextManager manager(files.path(), QString());

    device.hang();
    WarningCapture capture;
    QElapsedTimer timer;
    timer.start();
    auto language = std::async(std::launch::async, [&] { return manager.retrieveLanguageName(); });
    QTRY_VERIFY(!manager.m_Mutex.tryLock() || (manager.m_Mutex.unlock(), false)); // held meanwhile
    QCOMPARE(currentText(manager), "de_DE");
    QCOMPARE(language.get(), QString());
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(capture.take().size(), 1);

    timer.restart();
    const TextManager another(files.path(), QString()); // asks for its folder and its language
    QVERIFY2(timer.elapsed() < 4000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(currentText(another), "en_US");
    QCOMPARE(capture.take().size(), 1);

    device.resume();
    QCOMPARE(manager.retrieveLanguageName(), "de_DE");
}

void TextManagerTest::followsInItsOwnThread()
{
    const Languages files;
    DeviceService device(DeviceService::withLanguage("\"de_DE\""));
    device.start();
    auto manager = std::make_unique<TextManager>(files.path(), QString());
    QThread thread;
    thread.start();
    manager->moveToThread(&thread); // its connector stays behind

    std::promise<QThread*> reloadedIn;
    QObject::connect(manager.get(), &TextManager::languageReloaded, manager.get(),
                     [&] { reloadedIn.set_value(QThread::currentThread()); });
    DeviceService::setLanguage("fr_FR");
    auto future = reloadedIn.get_future();
    const auto isDone = [&] {
        return future.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    };
    QTRY_VERIFY(isDone());
    QCOMPARE(future.get(), &thread);
    QCOMPARE(std::async([&] { return manager->retrieveLanguageName(); }).get(), "fr_FR");

    QObject::connect(
        &thread, &QThread::finished, manager.get(), [&] { manager.reset(); }, Qt::DirectConnection);
    thread.quit();
    QVERIFY(thread.wait());
    QVERIFY(!manager);
}

void TextManagerTest::describesItself()
{
    const QMetaObject& meta = TextManager::staticMetaObject;
    QCOMPARE(meta.className(), "TextManager");
    QCOMPARE(meta.propertyCount(), TextManagerBase::staticMetaObject.propertyCount());
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        methods.append(QString("%1 %2 %3 %4")
                           .arg(method.access())
                           .arg(method.methodType())
                           .arg(QString(method.methodSignature()),
                                QString(method.parameterNames().join(','))));
    }
    QCOMPARE(methods, QStringList({QString("%1 %2 configurationChanged() ")
                                       .arg(QMetaMethod::Public)
                                       .arg(QMetaMethod::Slot),
                                   QString("%1 %2 deviceManagerConfigurationChanged(QString) "
                                           "strInstanceName")
                                       .arg(QMetaMethod::Private)
                                       .arg(QMetaMethod::Slot)}));
}

QTEST_GUILESS_MAIN(TextManagerTest)
#include "tst_text_manager.moc"
