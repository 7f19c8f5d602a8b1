#include "DeviceFiles.h"
#include "DeviceService.h"
#include "OddService.h"
#include "OpenTextManager.h"
#include "PrivateBus.h"
#include "Table.h"

#include "ConfigurationFileHandlerDBusConnector.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <future>

namespace
{

using Connector = ConfigurationFileHandlerDBusConnector;

const QString readError = "Received error on reading configuration setting for language: \"";

} // namespace

/** A text manager while the device's service, or the bus, is not there, comes, goes or hangs. */
class DeviceOutagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersWithoutAService()
    {
        WarningCapture capture;
        const TextManager unnamed(m_Files.path(), QString());
        QCOMPARE(capture.take(),
                 QStringList(readError + "The service Device.DeviceManager is not on the bus\""));
        QCOMPARE(currentText(unnamed), "en_US");

        const TextManager named(m_Files.path(), "de_DE");
        QCOMPARE(capture.take(), QStringList());
        QCOMPARE(currentText(named), "de_DE");

        const LanguageFiles faulty; // it warns each time that it is read, which is once
        faulty.write("de_DE", "{}");
        const TextManager loaded(faulty.path(), "de_DE");
        QCOMPARE(capture.take().filter("No 'Content'-key found").size(), 1);
    }

    void answersWithoutABus()
    {
        m_Bus.stop();
        WarningCapture capture;
        const TextManager unnamed(m_Files.path(), QString());
        const QString invalidPointer = "Invalid pointer to connector!";
        QCOMPARE(capture.take(), QStringList({invalidPointer, invalidPointer}));
        QCOMPARE(currentText(unnamed), "en_US");
        m_Bus.start();
    }

    void followsWhateverComesLate_data()
    {
        addTable(R"(what
        service
        service again
        bus again
        connection again
        )");
    }
    void followsWhateverComesLate()
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

    void asksAHastyServiceAgain()
    {
        WarningCapture capture;
        OddService service;
        TextManager manager(m_Files.path(), QString());
        QSignalSpy reloads(&manager, &TextManager::languageReloaded);
        QVERIFY(!reloads.wait(300)); // not before it can be read
        service.answer({"ja_JP"});
        QVERIFY(reloads.wait());
        QCOMPARE(currentText(manager), "ja_JP");
    }

    void outlivesTheService()
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
                 QStringList(readError +
                             "There is no entry configuration > "
                             "DeviceSettings/DeviceSettings > TextManager > Language\""));
        DeviceService::setLanguage("ja_JP");
        QVERIFY(reloads.wait());
        QCOMPARE(currentText(manager), "ja_JP");
    }

    void isNotHeldUpByAServiceThatHangs()
    {
        DeviceService device(DeviceService::withLanguage("\"de_DE\""));
        Opened<TextManager> manager(m_Files.path(), QString());
        WarningCapture capture;
        QElapsedTimer timer;

        device.send(SIGSTOP);
        timer.start();
        auto language =
            std::async(std::launch::async, [&] { return manager.retrieveLanguageName(); });
        QTRY_VERIFY(!manager.m_Mutex.tryLock() ||
                    (manager.m_Mutex.unlock(), false)); // held meanwhile
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

    void isNotHeldUpByABusThatStops()
    {
        DeviceService device(DeviceService::withLanguage("\"de_DE\""));
        QVERIFY(!Connector::createAndConnect("DeviceManager", "Configuration").isNull());
        WarningCapture capture;
        QElapsedTimer timer;
        m_Bus.send(SIGSTOP);
        timer.start();
        const TextManager manager(m_Files.path(), QString());
        m_Bus.send(SIGCONT);
        QVERIFY2(timer.elapsed() < 6000 * TIME_FACTOR,
                 qPrintable(QString::number(timer.elapsed())));
        QTRY_COMPARE(manager.getLanguageName(), "de_DE");
    }

private:
    PrivateBus m_Bus;
    const DeviceFiles m_Files;
};

QTEST_GUILESS_MAIN(DeviceOutagesTest)
#include "tst_device_outages.moc"
