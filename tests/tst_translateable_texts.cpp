#include "LanguageFiles.h"
#include "Table.h"
#include "WarningCapture.h"

#include "DynamicTextReaderInterface.h"
#include "ReadAllTextsHelper.h"
#include "TextManagerBase.h"
#include "TranslateableTextHelper.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <thread>

namespace
{

QVariant parseValue(const QString& json)
{
    const QJsonArray values = QJsonDocument::fromJson('[' + json.toUtf8() + ']').array();
    return values.isEmpty() ? QVariant() : values.first().toVariant();
}

const TranslateableTextHelper* watched = nullptr;
QtMessageHandler capture = nullptr;

/** Adds to a message whether it finds the helper's object empty. */
void watch(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    capture(type, context, text + (watched->getAvailableLanguages().isEmpty() ? " (empty)" : ""));
}

void take(TranslateableTextHelper& helper, const QString& step)
{
    const QString operation = step.section(' ', 0, 0);
    const QString argument = step.section(' ', 1);
    bool isValid = helper.isValid();
    if (operation == "json")
        isValid = helper.setTranslateableTextObject(argument);
    else if (operation == "variant")
        isValid = helper.setTranslateableTextObject(parseValue(argument));
    else if (operation == "language")
        QMetaObject::invokeMethod(&helper, "languageGotReloaded", Q_ARG(QString, argument));
    else if (operation == "text")
        helper.setText(argument, "");
    else if (operation == "get")
        helper.setCurrentText(helper.getText(argument));
    else if (operation == "show")
        helper.setProperty("currentText", argument);
    QCOMPARE(helper.isValid(), isValid);
    if (operation == "reset")
        helper.resetCurrentSettings();
}

class EchoingReader : public DynamicTextReaderInterface
{
public:
    using DynamicTextReaderInterface::DynamicTextReaderInterface;
    QVariant readDynamicValue(const QString& url) override { return parseValue(url); }
};

} // namespace

class TranslateableTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsItsObject_data();
    void followsItsObject();
    void survivesItsSlots();
    void describesItself();
    void exportsTexts();
    void exportsWhatTheHelperTakes();
    void readsDynamicTexts_data();
    void readsDynamicTexts();
    void readsDynamicTextsThroughTheTextManager();
};

void TranslateableTextsTest::followsItsObject_data()
{
    // Each row begins in fr_FR with {"en_US": "A", "POSIX": "B"}.
    addTable(
        R"(steps                         | signals | text | valid | object                        | warnings
        json {"fr_FR": "F", "POSIX": "B"}     | 1 | F | true  | {"POSIX":"B","fr_FR":"F"}              |
        json {"de_DE": "D", "POSIX": "B"}     | 1 | B | true  | {"POSIX":"B","de_DE":"D"}              |
        json {"FR_fr": "F", "en_US": "A"}     | 0 | A | false | {"FR_fr":"F","en_US":"A"}              |
        json {"fr_FR": "", "POSIX": ""}       | 1 |   | true  | {"POSIX":""}                           |
        json {"fr_FR": 7, "en_US": true}      | 1 | 7 | false | {"en_US":"true","fr_FR":"7"}           |
        variant {"fr_FR": {}, "POSIX": null}  | 1 |   | true  | {"POSIX":""}                           |
        json {"de_DE": "D"}                   | 1 |   | false | {"de_DE":"D"} | Unable to find suitable language!\nNo suitable language found in translateable text object: QMap(("de_DE", QVariant(QString, "D"))) !
        json                                  | 0 |   | false | {} | Error on parsing json: "illegal value" ! (empty)
        json 7                                | 0 |   | false | {} | Error on parsing json: "illegal value" ! (empty)
        json {"POSIX" "x"}                    | 0 |   | false | {} | Error on parsing json: "missing name separator" ! (empty)
        json []                               | 0 |   | false | {} | Json document does not contain an object! (empty)
        variant                               | 0 |   | false | {} | Cannot convert variant to variant map: QVariant(Invalid) !
        variant 7                             | 0 |   | false | {} | Cannot convert variant to variant map: QVariant(qlonglong, 7) !
        variant "{}"                          | 0 |   | false | {} | Cannot convert variant to variant map: QVariant(QString, "{}") !
        language POSIX                        | 1 | B | true  | {"POSIX":"B","en_US":"A"}              |
        language                              | 0 | A | true  | {"POSIX":"B","en_US":"A"}              |
        text fr_FR                            | 1 |   | true  | {"POSIX":"B","en_US":"A","fr_FR":""}   |
        show A                                | 0 | A | true  | {"POSIX":"B","en_US":"A"}              |
        show x; language fr_FR                | 1 | x | true  | {"POSIX":"B","en_US":"A"}              |
        get POSIX                             | 1 | B | true  | {"POSIX":"B","en_US":"A"}              |
        language POSIX; get                   | 1 | B | true  | {"POSIX":"B","en_US":"A"}              |
        language ; json {"": "E", "POSIX": ""} | 1 | E | true | {"":"E","POSIX":""}                    |
        reset; get                            | 0 |   | false | {} | Unable to find suitable language! (empty)\nNo suitable text found in translateable text object for language "fr_FR" : QMap() ! (empty))");
}

void TranslateableTextsTest::followsItsObject()
{
    TranslateableTextHelper helper("fr_FR", nullptr);
    QVERIFY(helper.setTranslateableTextObject(QJsonObject{{"en_US", "A"}, {"POSIX", "B"}}));
    const QSignalSpy spy(&helper, &TranslateableTextHelper::currentTextChanged);
    WarningCapture warnings;
    watched = &helper;
    capture = qInstallMessageHandler(watch);
    for (const QString& step : cell("steps").split("; "))
        take(helper, step);
    qInstallMessageHandler(capture);
    QCOMPARE(warnings.take().join('\n'), cell("warnings"));
    QCOMPARE(spy.count(), cell("signals").toInt());
    QCOMPARE(helper.currentText(), cell("text"));
    QCOMPARE(QVariant(helper.isValid()).toString(), cell("valid"));
    QCOMPARE(helper.getTranslateableTextObjectAsJsonString(), cell("object"));
    for (const QVariant& text : helper.getTranslateableTextObject())
        QCOMPARE(text.userType(), int(QMetaType::QString));
}

void TranslateableTextsTest::survivesItsSlots()
{
    auto deleted = std::make_unique<TranslateableTextHelper>("en_US", nullptr);
    connect(deleted.get(), &TranslateableTextHelper::currentTextChanged, this,
            [&] { deleted.reset(); });
    QVERIFY(!deleted->setTranslateableTextObject(QJsonObject{{"POSIX", "x"}}));

    TranslateableTextHelper setAgain("en_US", nullptr);
    connect(&setAgain, &TranslateableTextHelper::currentTextChanged, this, [&] {
        setAgain.setTranslateableTextObject(QJsonObject{{"en_US", "inner"}});
    });
    QVERIFY(!setAgain.setTranslateableTextObject(QJsonObject{{"POSIX", "outer"}}));
    QCOMPARE(setAgain.currentText(), QString("inner"));
}

void TranslateableTextsTest::describesItself()
{
    const QMetaObject& meta = TranslateableTextHelper::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
    const QMetaMethod changed = meta.method(meta.methodOffset());
    QCOMPARE(changed.methodSignature(), QByteArray("currentTextChanged()"));
    const QMetaMethod reloaded = meta.method(meta.methodOffset() + 1);
    QCOMPARE(reloaded.methodSignature(), QByteArray("languageGotReloaded(QString)"));
    QCOMPARE(reloaded.parameterNames().first(), QByteArray("strLanguage"));
    QCOMPARE(reloaded.access(), QMetaMethod::Private);
    const QMetaProperty property = meta.property(meta.propertyOffset());
    QCOMPARE(property.name(), "currentText");
    QVERIFY(property.isWritable() && property.notifySignal() == changed);
}

void TranslateableTextsTest::exportsTexts()
{
    const WarningCapture silenced; // of the number that is no text
    const LanguageFiles files;
    files.write("de_DE", R"({"Content": {"All": {"text": "d"}, "One": {"text": "1"}}})");
    files.write("en_US", R"({"Content": {"Empty": {"text": ""}, "Number": {"text": 1}}})");
    files.write("POSIX", R"({"Content": {"All": {"text": "p"}}})");
    const TextManagerBase manager(files.path(), "de_DE", "");
    const auto exported = [&](const char* url) {
        return ReadAllTextsHelper::getAllTextsAsJsonString(manager, url);
    };
    QCOMPARE(exported("All"), QString(R"({"POSIX":"p","de_DE":"d","en_US":"p"})"));
    QCOMPARE(exported("One"), QString(R"({"de_DE":"1"})"));
    QCOMPARE(exported("Empty"), QString(R"({"POSIX":""})")); // the only one to ask en_US last
    QCOMPARE(exported("Number"), QString(R"({"POSIX":""})"));
    QCOMPARE(exported("Nowhere"), QString("{}"));
}

void TranslateableTextsTest::exportsWhatTheHelperTakes()
{
    const TextManagerBase manager(EXAMPLE_LANGUAGES, "de_DE", "short");
    for (const QString& url : manager.getAvailableUrls("de_DE")) {
        TranslateableTextHelper helper("de_DE", nullptr);
        QVERIFY(helper.setTranslateableTextObject(
            ReadAllTextsHelper::getAllTextsAsJsonString(manager, url)));
        QCOMPARE(helper.getTranslateableTextObject(),
                 ReadAllTextsHelper::getAllTextsAsVariantMap(manager, url));
        QCOMPARE(helper.getAvailableLanguages(), manager.getAvailableLanguages());
        QCOMPARE(helper.currentText(), manager.getText(url, "de_DE"));
    }
}

void TranslateableTextsTest::readsDynamicTexts_data()
{
    addTable(R"(url                          | language | text | warnings
                {"de_DE": "d", "en_US": "e"} | de_DE    | d    |
                {"de_DE": "d", "en_US": "e"} | fr_FR    | e    |
                {"de_DE": "", "POSIX": ""}   | de_DE    |      |
                none                         | de_DE    |      | Unable to read value for url "none" !
                5                            | de_DE    |      | Cannot convert variant to variant map: QVariant(qlonglong, 5) !)");
}

void TranslateableTextsTest::readsDynamicTexts()
{
    EchoingReader reader("/other/files");
    DynamicTextHandler handler(nullptr);
    handler.setInterface(&reader);
    WarningCapture warnings;
    QCOMPARE(handler.getText(cell("url"), cell("language")), cell("text"));
    QCOMPARE(warnings.take().join('\n'), cell("warnings"));
    QCOMPARE(reader.getOtherfilesPath(), QString("/other/files"));
}

void TranslateableTextsTest::readsDynamicTextsThroughTheTextManager()
{
    TextManagerBase manager(QString(), "de_DE", QString());
    WarningCapture warnings;
    QCOMPARE(manager.getDynamicText("A/B", ""), QString());
    QCOMPARE(warnings.take(), QStringList("Invalid pointer to dynamic text handler interface! "
                                          "Unable to read text for url \"A/B\" ( \"\" )!"));
    EchoingReader reader("");
    manager.setDynamicTextReader(reader);
    QString text; // in a thread that neither the manager nor its handler lives in
    std::thread([&] {
        text = manager.getDynamicText(R"({"de_DE": "d", "POSIX": "p"})", "");
    }).join();
    QCOMPARE(text, QString("p"));
    QCOMPARE(warnings.take(), QStringList());
}

QTEST_GUILESS_MAIN(TranslateableTextsTest)
#include "tst_translateable_texts.moc"
