#include "DeviceFiles.h"
#include "DeviceService.h"
#include "OddService.h"
#include "Resources.h"
#include "Table.h"
#include "WarningCapture.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <future>

namespace
{

void call(const QString& method, const QVariantList& arguments = {}, bool isWaitedFor = false)
{
    QDBusMessage message = QDBusMessage::createMethodCall("Device.DeviceManager", "/Configuration",
                                                          "Interface.DeviceSimulator", method);
    message.setArguments(arguments);
    if (isWaitedFor)
        QDBusConnection::sessionBus().call(message);
    else
        QDBusConnection::sessionBus().send(message);
}

} // namespace

/** What a service may do, and a bus may let happen. */
class HostileBusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void outlivesAServiceThatDiesDuringACall()
    {
        DeviceService device(DeviceService::withLanguage("\"de_DE\""));
        TextManager manager(m_Files.path(), QString());
        WarningCapture capture;
        QElapsedTimer timer;
        device.send(SIGSTOP);
        timer.start();
        auto language =
            std::async(std::launch::async, [&] { return manager.retrieveLanguageName(); });
        device.end(SIGKILL); // it had the call, or never took it
        QCOMPARE(language.get(), QString());
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(currentText(manager), "de_DE");

        device.restart(DeviceService::withLanguage("\"ja_JP\""));
        QTRY_COMPARE(currentText(manager), "ja_JP");
    }

    void takesWhateverIsAnswered_data()
    {
        QTest::addColumn<QVariantList>("answer");
        QTest::addColumn<QString>("language");
        QTest::newRow("nothing") << QVariantList() << "";
        QTest::newRow("a text that is no variant") << QVariantList{"ja_JP"} << "ja_JP";
        QTest::newRow("two values") << QVariantList{"ja_JP", 7} << "ja_JP";
        QTest::newRow("a number") << QVariantList{7} << "7";
        QTest::newRow("a list") << QVariantList{QStringList{"ja_JP"}} << "";
        QTest::newRow("bytes") << QVariantList{QByteArray("\xff\0x", 3)} << "";
        QTest::newRow("a map") << QVariantList{QVariantMap{{"a", 1}}} << "";
        QTest::newRow("path parts that lead out") << QVariantList{"../../etc/passwd"} << "passwd";
        QTest::newRow("only separators") << QVariantList{"////"} << "";
        const QString megabytes(8'000'000 / TIME_FACTOR,
                                'x'); // nobody waits for more than a second
        QTest::newRow("megabytes") << QVariantList{"a/" + megabytes} << megabytes;
    }
    void takesWhateverIsAnswered()
    {
        QFETCH(const QVariantList, answer);
        QFETCH(const QString, language);
        OddService odd;
        odd.answer(answer);
        WarningCapture capture;
        const TextManager manager(m_Files.path(), QString());
        QCOMPARE(manager.getLanguageName(), language);
        QCOMPARE(currentText(manager), language == "ja_JP" ? "ja_JP" : "en_US");
    }

    void isNotBuriedUnderChanges_data()
    {
        addTable(R"(changes                | most reloads
        of everything              | 30
        of the settings            | 30
        of 10000 other instances   | 3
        )");
    }
    /** 10,000 in a row are told a few times: as they come within 20 ms, and at least once a second.
     */
    void isNotBuriedUnderChanges()
    {
        DeviceService device(DeviceService::withLanguage("\"de_DE\""));
        const TextManager manager(m_Files.path(), QString());
        QSignalSpy reloads(&manager, &TextManager::languageReloaded);
        qint64 longestAbsence = 0;
        const int megabytes = peakMegabytes();
        auto sender = std::async(std::launch::async, [] {
            for (int change = 0; change < 10'000; ++change) {
                const bool isLast = change == 9'999;
                if (cell("changes") == "of everything")
                    call("announceConfigurationDataChange", {}, isLast);
                else
                    call("announceConfigurationChange",
                         {cell("changes") == "of the settings"
                              ? QString("DeviceSettings/DeviceSettings")
                              : QString("other/%1").arg(change)},
                         isLast);
            }
        });
        while (sender.wait_for(std::chrono::milliseconds(0)) != std::future_status::ready) {
            QElapsedTimer timer;
            timer.start();
            QCoreApplication::processEvents();
            longestAbsence = std::max(longestAbsence, timer.elapsed());
        }
        DeviceService::setLanguage("ja_JP");
        QTRY_COMPARE(currentText(manager), "ja_JP");
        QTest::qWait(100 * TIME_FACTOR);
        const int taken = peakMegabytes() - megabytes;
        qInfo(
            "10000 changes, %d reloads, at most %d ms away from other events, at most %d MB taken",
            int(reloads.count()), int(longestAbsence), taken);
        QVERIFY(reloads.count() <= cell("most reloads").toInt() * TIME_FACTOR);
        QVERIFY2(taken < 100, qPrintable(QString::number(taken)));
        // Nothing is left of them, though a service that was too busy to answer may still come
        // back.
        QTRY_VERIFY_WITH_TIMEOUT(!reloads.wait(1100), 10'000);
    }

    /** Of two services the second is refused the name, and nobody hears it. */
    void followsTheOneWhoHasTheName()
    {
        DeviceService device(DeviceService::withLanguage("\"de_DE\""));
        TextManager manager(m_Files.path(), QString());
        QSignalSpy reloads(&manager, &TextManager::languageReloaded);
        {
            OddService second;
            second.answer({"ja_JP"});
            QDBusConnection bus("odd");
            for (int change = 0; change < 1000; ++change)
                bus.send(QDBusMessage::createSignal("/Configuration", "Interface.Configuration",
                                                    "configurationDataChanged"));
            QVERIFY(!reloads.wait(300));
            device.end(SIGKILL);
        }
        device.restart(DeviceService::withLanguage("\"ja_JP\""));
        QTRY_COMPARE(currentText(manager), "ja_JP");
    }

    void isDeletedWhileChangesAreUnderWay()
    {
        DeviceService device(DeviceService::withLanguage("\"de_DE\""));
        const auto useAndDelete = [this] {
            for (int round = 0; round < 20; ++round) {
                const TextManager manager(m_Files.path(), "de_DE");
                call("announceConfigurationDataChange", {}, true); // is on its way to the manager
                if (round % 2 == 0)
                    QCoreApplication::processEvents();
            }
        };
        auto elsewhere = std::async(std::launch::async, useAndDelete);
        useAndDelete();
        elsewhere.get();
        QTest::qWait(50);
        const TextManager manager(m_Files.path(), QString());
        QCOMPARE(currentText(manager), "de_DE");
    }

private:
    const DeviceFiles m_Files;
};

QTEST_GUILESS_MAIN(HostileBusTest)
#include "tst_hostile_bus.moc"
