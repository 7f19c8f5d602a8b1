#include "LanguageFiles.h"
#include "Table.h"
#include "WarningCapture.h"

#include "DynamicTextHandler.h"
#include "DynamicTextReaderInterface.h"
#include "ReadAllTextsHelper.h"
#include "TextManagerBase.h"
#include "TranslateableTextHelper.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>

#include <future>
#include <memory>

namespace
{

QVariant parseValue(const QString& json)
{
    const QJsonArray values = QJsonDocument::fromJson('[' + json.toUtf8() + ']').array();
    return values.isEmpty() ? QVariant() : values.first().toVariant();
}

void take(TranslateableTextHelper& helper, const QString& step)
{
    const QString operation = step.section(' ', 0, 0);
    const QString argument = step.section(' ', 1);
    if (operation == "json" || operation == "variant") {
        const bool isValid = operation == "json"
                                 ? helper.setTranslateableTextObject(argument)
                                 : helper.setTranslateableTextObject(parseValue(argument));
        QCOMPARE(helper.isValid(), isValid);
    } else if (operation == "language")
        QMetaObject::invokeMethod(&helper, "languageGotReloaded", Q_ARG(QString, argument));
    else if (operation == "text")
        helper.setText(argument, "");
    else if (operation == "get")
        helper.setCurrentText(helper.getText(argument));
    else if (operation == "show")
        helper.setProperty("currentText", argument);
    else if (operation == "reset")
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
    void followsItsObject_data()
    {
        // Each row begins in fr_FR with {"en_US": "A", "POSIX": "B"}.
        addTable(
            R"(steps                         | signals | text | valid | object                        | warnings
        json {"de_DE": "D", "POSIX": "B"}     | 1 | B | true  | {"POSIX":"B","de_DE":"D"}              |
        json {"FR_fr": "F", "en_US": "A"}     | 0 | A | false | {"FR_fr":"F","en_US":"A"}              |
        json {"fr_FR": "", "de_DE": 7, "en_US": {}, "POSIX": null} | 1 |  | true | {"POSIX":"","de_DE":"7"} |
        json {"de_DE": "D"}                   | 1 |   | false | {"de_DE":"D"}
        .. | Unable to find suitable language!\n
        .. No suitable language found in translateable text object: QMap(("de_DE", QVariant(QString, "D"))) !
        json                                  | 0 |   | false | {} | Error on parsing json: "illegal value" ! (empty)
        json []                               | 0 |   | false | {} | Json document does not contain an object! (empty)
        variant "{}"                          | 0 |   | false | {}
        .. | Cannot convert variant to variant map: QVariant(QString, "{}") !
        language POSIX                        | 1 | B | true  | {"POSIX":"B","en_US":"A"}              |
        text fr_FR                            | 1 |   | true  | {"POSIX":"B","en_US":"A","fr_FR":""}   |
        json {"en_US": "A"}; text POSIX       | 0 | A | false | {"POSIX":"","en_US":"A"}               |
        show x; language fr_FR                | 1 | x | true  | {"POSIX":"B","en_US":"A"}              |
        get POSIX                             | 1 | B | true  | {"POSIX":"B","en_US":"A"}              |
        language ; json {"": "E", "POSIX": ""} | 1 | E | true | {"":"E","POSIX":""}                    |
        reset; get                            | 0 |   | false | {}
        .. | Unable to find suitable language! (empty)\n
        .. No suitable text found in translateable text object for language "fr_FR" : QMap() ! (empty))");
    }
    void followsItsObject()
    {
        TranslateableTextHelper helper("fr_FR", nullptr);
        QVERIFY(helper.setTranslateableTextObject(QJsonObject{{"en_US", "A"}, {"POSIX", "B"}}));
        const QSignalSpy spy(&helper, &TranslateableTextHelper::currentTextChanged);
        bool isValidThen = true; // at the last signal
        connect(&helper, &TranslateableTextHelper::currentTextChanged, this,
                [&] { isValidThen = helper.isValid(); });
        WarningCapture warnings([&](const QString&) { // whether the object is empty then
            return helper.getAvailableLanguages().isEmpty() ? QString(" (empty)") : QString();
        });
        for (const QString& step : cell("steps").split("; "))
            take(helper, step);
        QCOMPARE(warnings.take().join('\n'), cell("warnings"));
        QCOMPARE(spy.count(), cell("signals").toInt());
        QVERIFY(spy.isEmpty() || isValidThen == helper.isValid());
        QCOMPARE(helper.currentText(), cell("text"));
        QCOMPARE(QVariant(helper.isValid()).toString(), cell("valid"));
        QCOMPARE(helper.getTranslateableTextObjectAsJsonString(), cell("object"));
        for (const QVariant& text : helper.getTranslateableTextObject())
            QCOMPARE(text.userType(), int(QMetaType::QString));
    }

    void survivesItsSlots()
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

    void exportsWhatTheHelperTakes()
    {
        const TextManagerBase manager(EXAMPLE_LANGUAGES, "de_DE", "short");
        for (const QString& url : manager.getAvailableUrls("POSIX")) {
            TranslateableTextHelper helper("de_DE", nullptr);
            QVERIFY(helper.setTranslateableTextObject(
                ReadAllTextsHelper::getAllTextsAsJsonString(manager, url)));
            QCOMPARE(helper.getTranslateableTextObject(),
                     ReadAllTextsHelper::getAllTextsAsVariantMap(manager, url));
            QCOMPARE(helper.currentText(), manager.getText(url, "de_DE"));
        }
        const LanguageFiles files;
        files.write("de_DE", R"({"Content": {}})");
        files.write("POSIX", R"({"Content": {"A": {"text": ""}}})");
        QCOMPARE(
            ReadAllTextsHelper::getAllTextsAsJsonString(TextManagerBase(files.path(), "", ""), "A"),
            R"({"de_DE":""})");
    }

    void readsDynamicTexts()
    {
        TextManagerBase manager(QString(), "de_DE", QString());
        WarningCapture warnings;
        QCOMPARE(manager.getDynamicText("A/B", ""), QString());
        const QStringList noReader("Invalid pointer to dynamic text handler interface! "
                                   "Unable to read text for url \"A/B\" ( \"\" )!");
        QCOMPARE(warnings.take(), noReader);

        EchoingReader reader("/other/files");
        QCOMPARE(reader.getOtherfilesPath(), QString("/other/files"));
        manager.setDynamicTextReader(reader);
        const QString texts = R"({"de_DE": "d", "en_US": "e"})";
        // In a thread that neither the text manager nor its handler lives in.
        auto text =
            std::async(std::launch::async, [&] { return manager.getDynamicText(texts, "de_DE"); });
        QCOMPARE(text.get(), "d");
        QCOMPARE(manager.getDynamicText(texts, ""), "e");
        QCOMPARE(warnings.take(), QStringList());
        QCOMPARE(manager.getDynamicText("none", "de_DE"), QString());
        QCOMPARE(warnings.take(), QStringList("Unable to read value for url \"none\" !"));

        DynamicTextHandler handler(nullptr);
        handler.setInterface(&reader);
        handler.setInterface(nullptr);
        QCOMPARE(handler.getText("A/B", ""), QString());
        QCOMPARE(warnings.take(), noReader);
    }
};

QTEST_GUILESS_MAIN(TranslateableTextsTest)
#include "tst_translateable_texts.moc"
