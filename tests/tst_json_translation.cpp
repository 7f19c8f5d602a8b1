#include "DeviceService.h"
#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"
#include "WarningCapture.h"

#include "DynamicTextReaderInterface.h"
#include "JsonDataIterator.h"
#include "JsonDataIteratorTextIdTranslator.h"
#include "TextManagerBase.h"
#include "TextManagerReferenceParameters.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTest>
#include <QThread>

#include <future>
#include <memory>

namespace
{

using Translator = JsonDataIteratorTextIdTranslator;

/** Texts A to C: full, with a short text, only in a fallback language; and one that names A. */
class Languages : public LanguageFiles
{
public:
    Languages()
    {
        write("de_DE", R"({"Content": {"A": {"text": "a"}, "B": {"text": "b"},
                           "NameOfA": {"text": "A"}, "None": {"text": ""}}})");
        write("POSIX", R"({"Content": {"C": {"text": "c"}}})");
        write("short/de_DE", R"({"Content": {"B": {"text": "s"}}})");
    }
};

/** Has the text "dynamic" in de_DE everywhere but at "nowhere". */
class Reader : public DynamicTextReaderInterface
{
public:
    using DynamicTextReaderInterface::DynamicTextReaderInterface;
    QVariant readDynamicValue(const QString& url) override
    {
        return url == "nowhere" ? QVariant() : QVariantMap{{"de_DE", "dynamic"}};
    }
};

QString toCompact(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

/** @param steps "type N", "keys TEXTID:TEXT:SHORT" or "delete", separated by "; ". */
QString translate(const TextManagerBase& manager, const QString& steps, const QString& object)
{
    TextManagerReferenceParameters parameters(manager, "de_DE");
    parameters.setReadMode(TextManagerReferenceParameters::ShortText); // plays no part
    Translator translator(parameters);
    for (const QString& step : steps.split("; ")) {
        const QStringList arguments = step.section(' ', 1).split(':');
        if (step.startsWith("type"))
            translator.setConfiguration(Translator::DataType(arguments.first().toInt()));
        else if (step.startsWith("keys"))
            translator.addConfigurationElement(arguments[0], arguments[1], arguments[2]);
        else
            translator.setDeleteTextUrl(step == "delete");
    }
    QJsonObject translated = parseObject(object.toUtf8());
    QJsonValue value;
    static_cast<JsonDataIteratorObjectBase&>(translator).compute(translated, value);
    return toCompact(translated);
}

/** Gathers the "n" of the objects that it is given, and counts them in "seen". */
class Visitor : public JsonDataIteratorObjectBase
{
public:
    void compute(QJsonObject& object, QJsonValue& value) override
    {
        value = value.toString() + object.value("n").toString();
        object.insert("seen", value.toString().size());
    }
};

} // namespace

class JsonTranslationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsThroughParameters();
    void translates_data();
    void translates();
    void asksTheDevice_data();
    void asksTheDevice();
    void walks();
    void servesUsers_data();
    void servesUsers();
    void answersEachLineAtOnce();
};

void JsonTranslationTest::readsThroughParameters()
{
    const Languages files;
    const TextManagerBase manager(files.path(), "en_US", "short");
    TextManagerReferenceParameters parameters(manager, "de_DE");
    QCOMPARE(parameters.getText("B") + parameters.getShortText("B"), "bs");
    parameters.setReadMode(TextManagerReferenceParameters::ShortText);
    QCOMPARE(parameters.getText("B") + parameters.getText("C"), "sc");
    parameters.setReadMode(TextManagerReferenceParameters::ReadMode(2));
    WarningCapture warnings;
    QCOMPARE(parameters.getText("B") + parameters.getText("C"), "bc");
    const QString warning = "Received invalid read mode, reading normal text version!";
    QCOMPARE(warnings.take(), QStringList({warning, warning}));

    QJsonObject document = parseObject(R"({"Content": {"A": {"text": "a"}}})");
    const TextManagerBase inMemory("de_DE", document); // its mutex is not recursive
    QCOMPARE(translate(inMemory, "type 3", R"({"labelTextId": "A"})"),
             R"({"labelText":"a","labelTextId":"A"})");
}

void JsonTranslationTest::translates_data()
{
    addTable(
        R"(steps                | object                                             | result | warnings
        none                         | {"labelTextId":"A"}                                | {"labelTextId":"A"} |
        type 1                       | {"labelTextId":"B"}                                | {"label":"b","labelShort":"s","labelTextId":"B"} |
        type 1                       | {"labelTextId":"C"}                                | {"label":"c","labelShort":"c","labelTextId":"C"} |
        type 1; delete               | {"labelTextId":"B","label":""}                     | {"label":"b","labelShort":"s","labelTextId":""} |
        type 1; delete               | {"labelTextId":"B","label":"kept"}                 | {"label":"kept","labelTextId":"B"} |
        type 1                       | {"labelTextId":"None"}                             | {"label":"","labelShort":"","labelTextId":"None"} |
        type 1                       | {"labelTextId":"B","label":null}                   | {"label":"b","labelShort":"s","labelTextId":"B"} | JsonValue for 'Text' does not contain a string!
        type 1; delete               | {"labelTextId":7,"label":8}                        | {"label":8,"labelTextId":7} | JsonValue for 'Text' does not contain a string!\nJsonValue for 'TextId' does not contain a string!
        type 1; delete               | {"labelTextUrl":"x","labelTextId":"B","label":"o"} | {"label":"dynamic","labelTextId":"B","labelTextUrl":"x"} |
        type 1                       | {"labelTextUrl":""}                                | {"label":"dynamic","labelTextUrl":""} |
        type 1                       | {"labelTextUrl":"nowhere","label":"o"}             | {"label":"","labelTextUrl":"nowhere"} | Unable to read value for url "nowhere" !
        type 1                       | {"labelTextUrl":"nowhere","labelTextId":"A"}       | {"label":"a","labelShort":"a","labelTextId":"A","labelTextUrl":"nowhere"} | Unable to read value for url "nowhere" !
        type 1                       | {"labelTextUrl":7,"label":"o"}                     | {"label":"o","labelTextUrl":7} | Json value for labelTextUrl does not contain a string: QJsonValue(double, 7) !
        type 2; delete               | {"labelTextUrl":"","labelTextId":"A"}              | {"labelText":"a","labelTextId":"","labelTextUrl":""} |
        type 2; delete               | {"labelTextUrl":7,"labelTextId":"A","labelText":8} | {"labelText":"a","labelTextId":"","labelTextUrl":7} |
        type 3; delete               | {"labelTextUrl":"x","labelTextId":"B","labelText":"o"} | {"labelText":"b","labelTextId":"","labelTextUrl":"x"} |
        type 3; type 3; delete       | {"labelTextId":"A"}                                | {"labelText":"a","labelTextId":""} |
        type 4                       | {"labelTextId":"A","labelText":"kept","valueTextId":"B","valueText":""} | {"labelText":"kept","labelTextId":"A","valueText":"b","valueTextId":"B","valueTextShort":"s"} |
        type 4; delete               | {"valueTextId":[],"labelTextId":"B"}               | {"labelText":"b","labelTextId":"","labelTextShort":"s","valueTextId":[]} | JsonValue for 'TextId' does not contain a string!
        type 1; type 5               | {"labelTextUrl":"x","labelTextId":"B"}             | {"label":"b","labelShort":"s","labelTextId":"B","labelTextUrl":"x"} | Received unknown data type: 5 !
        type 0; type -1              | {"labelTextUrl":"x","labelTextId":"B"}             | {"labelTextId":"B","labelTextUrl":"x"} | Received unknown data type: 0 !\nReceived unknown data type: -1 !
        keys i:t:; type 4            | {"i":"A","valueTextId":"A"}                        | {"i":"A","valueText":"a","valueTextId":"A","valueTextShort":"a"} |
        type 4; keys valueText:t:s   | {"valueTextId":"NameOfA"}                          | {"s":"a","t":"a","valueText":"A","valueTextId":"NameOfA","valueTextShort":"A"} |
        keys i:t:; keys i::; delete  | {"i":"A","labelTextUrl":"x"}                       | {"":"","i":"","labelTextUrl":"x","t":"a"} |)");
}

void JsonTranslationTest::translates()
{
    const Languages files;
    TextManagerBase manager(files.path(), "en_US", "short");
    Reader reader("");
    manager.setDynamicTextReader(reader);
    WarningCapture warnings;
    QCOMPARE(translate(manager, cell("steps"), cell("object")), cell("result"));
    QCOMPARE(warnings.take().join('\n'), cell("warnings"));
}

void JsonTranslationTest::asksTheDevice_data()
{
    // The calls: whether the service is there, for each connection, and what it is asked then.
    addTable(R"(selector            | text    | calls                       | warnings
        DeviceManager:Configuration:I:U[1]    | dynamic | NameHasOwner getDynamicText |
        DeviceManager:Configuration:I:number  | 7       | NameHasOwner getDynamicText |
        DeviceManager:Configuration:I:blank   | a       | NameHasOwner getDynamicText |
        DeviceManager:Configuration:I:empty   | a       | NameHasOwner getDynamicText | Received an invalid dynamic text value QVariant(Invalid) !
        DeviceManager:Configuration:I:list    | a       | NameHasOwner getDynamicText | Received an invalid dynamic text value QVariant(QVariantList, (QVariant(QString, "x"))) !
        DeviceManager:Configuration:I:U       | a       | NameHasOwner getDynamicText | Error on reading dynamic text for selector: "URL" !
        DeviceManager:Configuration:I:display | a       | NameHasOwner getDynamicText | Error on reading dynamic text for selector: "URL" !
        Nobody:Configuration:I:U[1]           | a       | NameHasOwner                | Invalid pointer to connector!\nError on reading dynamic text for selector: "URL" !
        nonsense                              | a       |                             | Selectortext Url is invalid:  "URL"\nError on reading dynamic text for selector: "URL" !)");
}

void JsonTranslationTest::asksTheDevice()
{
    DeviceService device(R"({"dynamicTexts": {"I": {
        "U[1]": {"Device": {"de_DE": "dynamic", "POSIX": "other"}},
        "number": {"Device": {"de_DE": 7}}, "blank": {"Device": {"de_DE": ""}},
        "empty": {"Device": {"de_DE": null}}, "list": {"Device": {"de_DE": ["x"]}},
        "display": {"Display": {"de_DE": "dynamic"}}}}})");
    QProcess monitor; // of who asks the bus for a service, and what the device is asked
    monitor.start("dbus-monitor", {"--profile", "member='NameHasOwner'",
                                   "type='method_call',interface='Interface.Configuration'"});
    const auto callsUntil = [&](const QByteArray& last) {
        QByteArray calls;
        while (!calls.contains(last) && (monitor.canReadLine() || monitor.waitForReadyRead()))
            calls += ' ' + monitor.readLine().trimmed().split('\t').last();
        return QString(calls).simplified();
    };
    callsUntil("NameLost"); // of the monitor: it has begun
    const Languages files;
    const TextManagerBase manager(files.path(), "en_US", "short");
    const auto translated = [&](const QString& steps) {
        return translate(manager, steps,
                         QString(R"({"labelTextId": "A", "labelTextUrl": "%1", "labelText": "o"})")
                             .arg(cell("selector")));
    };
    WarningCapture warnings;
    const bool isRead = cell("text") != "a";
    QCOMPARE(translated("type 2; delete"),
             QString(R"({"labelText":"%1","labelTextId":"%2","labelTextUrl":""})")
                 .arg(cell("text"), isRead ? "A" : ""));
    const QString expected = cell("warnings").replace("URL", cell("selector"));
    QCOMPARE(warnings.take().join('\n'), expected);
    QVERIFY(translated("type 2").contains(cell("selector")));
    QCOMPARE(warnings.take().join('\n'), expected);
    DeviceService::tell("announceEnd");
    QCOMPARE(callsUntil("announceEnd"),
             (cell("calls") + ' ' + cell("calls") + " announceEnd").simplified());
    monitor.kill();
    monitor.waitForFinished();
}

void JsonTranslationTest::walks()
{
    const QByteArray json = R"({"n": "1", "z": {"n": "3"}, "l": [[{"n": "2"}], 5, []]})";
    const QJsonObject data = parseObject(json);
    QJsonValue walked = data;
    Visitor visitor;
    QCOMPARE(JsonDataIterator::iterate(walked, visitor), "123");
    QCOMPARE(data, parseObject(json));
    QCOMPARE(toCompact(walked.toObject()),
             R"({"l":[[{"n":"2","seen":2}],5,[]],"n":"1","seen":1,"z":{"n":"3","seen":3}})");
    constexpr int depth = 1024; // what the parser takes
    const QByteArray opened = QByteArray(R"({"o":)").repeated(depth - 1);
    walked = parseObject(opened + "{}" + QByteArray("}").repeated(depth - 1));
    std::promise<void> done; // the thread sanitizer knows it, but not the thread's own wait()
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        JsonDataIterator::iterate(walked, visitor);
        done.set_value();
    }));
    thread->setStackSize(128 * 1024);
    thread->start();
    done.get_future().wait();
    QVERIFY(thread->wait());
    QCOMPARE(toCompact(walked.toObject()).count("seen"), depth);
}

void JsonTranslationTest::servesUsers_data()
{
    addTable(
        R"(words                            | input                              | status | output | message
        --keys i:t:s --short-folder short       | [{"i":"B"},{"i":"A","t":"x"},{"i":7}] | 0 | [{"i":"B","s":"s","t":"b"},{"i":"A","t":"x"},{"i":7}] | JsonValue for 'TextId' does not contain a string!
        --keys i:t --keys t:u --delete-text-url | {"i":"NameOfA","t":"A"}            | 0 | {"i":"NameOfA","t":"","u":"a"} |
        --data-type SystemInformationData -     | {"valueTextId":"C","labelTextId":"D"} | 1 | {"labelText":"","labelTextId":"D","labelTextShort":"","valueText":"c","valueTextId":"C","valueTextShort":"c"} | textmanager: unknown text ids, for which the empty text was written: 1\ntextmanager: D: no text (de_DE: not in its file,
        --keys i:t FILE                         |                                    | 2 |    | FILE:2:10: malformed JSON: syntax error while parsing object - unexpected number literal; expected '}'.
        --keys i:t                              | 7                                  | 2 |    | standard input:1:1: malformed JSON: illegal value. Expected is an object or an array.
        --keys i:t --lines                      | {"i":"A"}\n\n{"i" 5}\n7\n{"i":"E"}\n[{"i":"E"}] | 1 | {"i":"A","t":"a"}{"i":"E","t":""}[{"i":"E","t":""}] | standard input:3:6: malformed JSON
        --keys i:t --lines DIR                  |                                    | 2 |    | textmanager: cannot read DIR: Is a directory.
        --keys i                                |                                    | 2 |    | --keys i: expected TEXTID:TEXT or TEXTID:TEXT:SHORT.
        --data-type SystemInformationDat        |                                    | 2 |    | no data type 'SystemInformationDat'. Did you mean SystemInformationData?
        --keys i:t --data-type x                |                                    | 2 |    | either --data-type or --keys
        a b                                     |                                    | 2 |    | translate: unexpected argument 'b'.)");
}

void JsonTranslationTest::servesUsers()
{
    const Languages files;
    files.write("data/faulty", "[{\n\"i\": \"A\" 7}]");
    const auto withPaths = [&](const QString& text) {
        return QString(text)
            .replace("FILE", files.file("data/faulty"))
            .replace("DIR", files.path());
    };
    const ToolRun run(
        QStringList{"translate", files.path(), "--language", "de_DE", "--format", "json"} +
            withPaths(cell("words")).split(' '),
        cell("input").toUtf8());
    QCOMPARE(run.output().remove('\n'), cell("output"));
    QVERIFY2(run.messages().contains(withPaths(cell("message"))), qPrintable(run.messages()));
    QCOMPARE(run.exitStatus(), cell("status").toInt());
}

void JsonTranslationTest::answersEachLineAtOnce()
{
    const Languages files;
    QProcess tool;
    tool.start(TEXTMANAGER_PROGRAM, {"translate", files.path(), "--keys", "i:t", "--lines"});
    for (int line = 0; line < 2; ++line) {
        tool.write("{\"i\": \"C\"}\n");
        while (!tool.canReadLine() && tool.waitForReadyRead()) {
        }
        QCOMPARE(tool.readLine(), QByteArray("{\"i\":\"C\",\"t\":\"c\"}\n"));
    }
    tool.closeWriteChannel();
    QVERIFY(tool.waitForFinished());
    QCOMPARE(tool.exitCode(), 0);
}

QTEST_GUILESS_MAIN(JsonTranslationTest)
#include "tst_json_translation.moc"
