#include "LanguageFiles.h"
#include "Table.h"
#include "WarningCapture.h"

#include <TextManagerBase.h>
#include <TextManagerQuick.h>

#include <QElapsedTimer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <thread>

#include <malloc.h>

namespace
{

/** A text manager whose language a test changes, as a device does: outside the mutex. */
class Device : public TextManagerBase
{
public:
    explicit Device(const LanguageFiles& files)
        : TextManagerBase(files.path(), "de_DE", "short")
    {
    }
    void setLanguage(const QString& language)
    {
        m_StrLanguageName = language;
        reloadLanguage();
    }
};

} // namespace

/** The QML module: labels that follow the language, and what they do when they cannot. */
class TestQuick : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        writeLanguage("de_DE", "Sichern", "Filter verschmutzt");
        writeLanguage("en_US", "Save", "Filter dirty");
        writeLanguage("ar_EG", "حفظ", "المرشح متسخ");
        m_Files.write("short/de_DE", R"({"Content": {"Dirty": {"text": "Filter!"}}})");
        m_Files.write("POSIX",
                      R"({"Content": {"Same": {"text": "CO2"}, "Range": {"text": "%2 < %1, %3"},
            "Due": {"text": "{n, plural, one {one day} other {{n} days}}"}}})");
        m_Engine = std::make_unique<QQmlEngine>();
        m_Device = std::make_unique<Device>(m_Files);
        TextManagerQuick::install(*m_Engine, *m_Device);
    }
    void cleanup() { m_Engine.reset(); }

    void labelsFollowTheLanguageWithOneLookUpEach()
    {
        const auto item = create(R"(Item {
            property var calls: ({ count: 0 })
            property alias save: save.text
            property alias device: device.text
            Text { id: save; objectName: "save"; text: { parent.calls.count += 1; return Texts.text("Save") } }
            Text { objectName: "same"; text: { parent.calls.count += 1; return Texts.text("Same") } }
            DeviceText { id: device; objectName: "device"; url: "Dirty" }
            DeviceText { objectName: "other"; url: "Same" } })");
        const auto shown = [&] {
            const int calls = item->property("calls").toMap().value("count").toInt();
            return QString("%1, %2, %3 calls")
                .arg(item->property("save").toString(), item->property("device").toString())
                .arg(calls);
        };
        const QSignalSpy same(item->findChild<QObject*>("same"), SIGNAL(textChanged(QString)));
        const QSignalSpy other(item->findChild<QObject*>("other"), SIGNAL(textChanged(QString)));
        QCOMPARE(shown(), "Sichern, Filter verschmutzt, 2 calls");
        m_Device->setLanguage("en_US");
        QCOMPARE(shown(), "Save, Filter dirty, 4 calls");
        writeLanguage("en_US", "Store", "Filter is dirty");
        m_Device->reloadLanguage();
        QCOMPARE(shown(), "Store, Filter is dirty, 6 calls");
        QCOMPARE(same.count() + other.count(), 0);
    }

    void tellsOfLanguagesAndShowsAnother()
    {
        const auto item = create(R"(Item {
            property string chosen
            onChosenChanged: Texts.chosenLanguage = chosen
            property string state1: [Texts.language, Texts.deviceLanguage, Texts.chosenLanguage, Texts.isRightToLeft,
                Texts.languages.join("+"), Texts.nameOf("de_DE"), Texts.nameOf("POSIX"),
                Texts.text("Save")].join() })");
        const auto state = [&] {
            return item->property("state1").toString().replace(languages, "*");
        };
        const QString names = "Deutsch,POSIX";
        QCOMPARE(state(), "de_DE,de_DE,,false,*," + names + ",Sichern");
        item->setProperty("chosen", "ar_EG");
        QCOMPARE(state(), "ar_EG,de_DE,ar_EG,true,*," + names + ",حفظ");
        m_Device->setLanguage("en_US");
        QCOMPARE(state(), "ar_EG,en_US,ar_EG,true,*," + names + ",حفظ");
        item->setProperty("chosen", "");
        QCOMPARE(state(), "en_US,en_US,,false,*," + names + ",Save");
    }

    void showsAUrlWithoutTextAndReportsItOnceWithItsPlace()
    {
        WarningCapture warnings;
        const auto item = create(R"(Item {
            Text { objectName: "text"
                text: "<" + Texts.text("Svae") + Texts.text("Svae") + Texts.text("") + Texts.text(undefined) + ">" }
            DeviceText { objectName: "device"
                url: "Drity" }
            DeviceText { url: "Drity"; args: { "n": 1 } } })");
        QCOMPARE(item->findChild<QObject*>("text")->property("text"), "<[Svae][Svae]>");
        QCOMPARE(item->findChild<QObject*>("device")->property("text"), "[Drity]");
        const QString reports = warnings.take().join('|').remove("not a located warning: ");
        QCOMPARE(reports, "file:///test.qml:4: No text found for url \"Svae\"|"
                          "file:///test.qml:7:13: QML DeviceText: No text found for url \"Drity\"");
        m_Device->reloadLanguage();
        QCOMPARE(warnings.take(), QStringList());

        writeLanguage("de_DE", "Sichern", "Filter verschmutzt", "Svae");
        m_Device->reloadLanguage();
        QCOMPARE(item->findChild<QObject*>("text")->property("text"), "<newnew>");
    }

    void takesTheShortTextWhereTheFullOneDoesNotFit_data()
    {
        addTable(R"(
        case                | properties                                                            | text
        as wide as it wants |                                                                       | Filter verschmutzt
        wide enough         | width: 500                                                            | Filter verschmutzt
        too narrow          | width: 60                                                             | Filter!
        padded              | width: fullWidth; leftPadding: 100; Component.onCompleted: width -= 9 | Filter!
        without a width yet | width: 0                                                              | Filter verschmutzt
        cut short           | width: 60; elide: Text.ElideRight                                     | Filter!
        on two lines        | width: 100; wrapMode: Text.Wrap                                       | Filter verschmutzt
        too low             | width: 100; wrapMode: Text.Wrap; height: 20                           | Filter!
        in smaller letters  | width: 100; fontSizeMode: Text.HorizontalFit; minimumPixelSize: 5     | Filter verschmutzt
        size from text      | width: Math.min(implicitWidth, 60)                                    | Filter!
        )");
    }
    void takesTheShortTextWhereTheFullOneDoesNotFit()
    {
        WarningCapture warnings;
        const auto item =
            create("DeviceText { url: 'Dirty'; font.pixelSize: 16; " + cell("properties") + " }");
        QCoreApplication::processEvents();
        QCOMPARE(item->property("text"), cell("text"));
        QCOMPARE(warnings.take(), QStringList());
    }

    void goesBackToTheFullTextWhenThereIsRoom()
    {
        WarningCapture warnings;
        const auto item = create(R"(Item { width: 60
            DeviceText { objectName: "label"; url: "Dirty"; width: Math.min(fullWidth, parent.width)
                font.pixelSize: 16 } })");
        auto* label = item->findChild<QQuickItem*>("label");
        QTRY_COMPARE(label->property("text"), "Filter!");
        QCOMPARE(label->property("isShort"), true);
        item->setProperty("width", 500);
        QTRY_COMPARE(label->property("text"), "Filter verschmutzt");
        item->setProperty("width", 70);
        QTRY_COMPARE(label->property("text"), "Filter!");
        QFont font = label->property("font").value<QFont>();
        font.setPixelSize(6);
        label->setProperty("font", font);
        QTRY_COMPARE(label->property("text"), "Filter verschmutzt");
        m_Device->setLanguage("en_US"); // has no short text
        item->setProperty("width", 10);
        QTest::qWait(50);
        QCOMPARE(label->property("text"), "Filter dirty");
        QCOMPARE(warnings.take(), QStringList());
    }

    void fillsArgumentsIn()
    {
        const auto item = create(R"(Item { property int days: 1
            DeviceText { objectName: "range"; url: "Range"; args: { "1": 1250.5, "2": "%1" } }
            DeviceText { objectName: "due"; url: "Due"; args: { "n": parent.days } } })");
        QCOMPARE(item->findChild<QObject*>("range")->property("text"), "%1 < 1.250,5, %3");
#ifdef TEXTMANAGER_HAS_MESSAGES
        QObject* due = item->findChild<QObject*>("due");
        QCOMPARE(due->property("text"), "one day");
        item->setProperty("days", 1250);
        QCOMPARE(due->property("text"), "1250 days");
#endif
    }

    void followsReloadsOfAnotherThread()
    {
        const auto item = create("Text { text: Texts.text('Save') }");
        std::thread other([this] {
            for (int turn = 0; turn < 50; ++turn)
                m_Device->setLanguage(turn % 2 == 0 ? "de_DE" : "en_US");
        });
        QElapsedTimer timer;
        timer.start();
        while (!timer.hasExpired(50)) {
            QVERIFY(!create("DeviceText { url: 'Dirty' }")->property("text").toString().isEmpty());
            QCoreApplication::processEvents();
        }
        other.join();
        QTRY_COMPARE(item->property("text"), "Save");
    }

    void leavesNothingBehindOfTenThousandLabels()
    {
        const auto item = create(R"(Item {
            property alias count: labels.model
            Repeater { id: labels; model: 0
                Item { DeviceText { url: "Dirty"; width: 60 } Text { text: Texts.text("Save" + index % 2) } } } })");
        const WarningCapture warnings;
        const auto makeAndDestroyThousand = [&] {
            item->setProperty("count", 1000);
            item->setProperty("count", 0);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
            m_Engine->collectGarbage();
        };
        for (int turn = 0; turn < 3; ++turn)
            makeAndDestroyThousand();
        const auto before = ::mallinfo2().uordblks;
        for (int turn = 0; turn < 10; ++turn)
            makeAndDestroyThousand();
        const auto grown =
            static_cast<qint64>(::mallinfo2().uordblks) - static_cast<qint64>(before);
        QVERIFY2(grown < 10000 * 8, qPrintable(QString::number(grown)));
    }

    void saysThatItIsInstalledOnceForEachEngine()
    {
        WarningCapture warnings;
        TextManagerQuick::install(*m_Engine, *m_Device);
        QCOMPARE(warnings.take(),
                 {"TextManagerQuick::install() was called before for this engine"});
        m_Engine = std::make_unique<QQmlEngine>();
        create("Text { text: Texts.text('Save') }");
        QVERIFY(
            warnings.take().contains("TextManagerQuick::install() was not called for this engine"));
    }

private:
    std::unique_ptr<QObject> create(const QString& qml)
    {
        QQmlComponent component(m_Engine.get());
        component.setData(("import QtQuick 2.15; import TextManager 1.0\n" + qml).toUtf8(),
                          QUrl("file:///test.qml"));
        std::unique_ptr<QObject> object(component.create());
        if (object == nullptr)
            qFatal("%s", qPrintable(component.errorString()));
        return object;
    }
    void writeLanguage(const QString& language, const QString& save, const QString& dirty,
                       const QString& more = "More")
    {
        const QString json =
            R"({"Content": {"Save": {"text": "%1"}, "Dirty": {"text": "%2"}, "%3": {"text": "new"}}})";
        m_Files.write(language, json.arg(save, dirty, more).toUtf8());
    }

    const QString languages = "ar_EG+de_DE+en_US";
    LanguageFiles m_Files;
    std::unique_ptr<Device> m_Device;
    std::unique_ptr<QQmlEngine> m_Engine; // goes first
};

QTEST_MAIN(TestQuick)
#include "tst_quick.moc"
