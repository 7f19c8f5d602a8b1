#include "DeviceService.h"
#include "LanguageFiles.h"
#include "Resources.h"
#include "Table.h"
#include "WarningCapture.h"

#include "DynamicTextReaderInterface.h"
#include "JsonDataIterator.h"
#include "JsonDataIteratorTextIdTranslator.h"
#include "TextManagerBase.h"
#include "TextManagerReferenceParameters.h"

#include <QJsonDocument>
#include <QProcess>
#include <QTest>

#include <type_traits>

namespace
{

using Translator = JsonDataIteratorTextIdTranslator;

using Parameters = TextManagerReferenceParameters;
static_assert(!std::is_copy_assignable_v<Parameters> && !std::is_move_assignable_v<Parameters>,
              "they refer to one text manager for as long as they live");

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

QString toCompact(const QJsonValue& data)
{
    return QJsonDocument(data.toObject()).toJson(QJsonDocument::Compact);
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
    QJsonValue data = parseObject(object.toUtf8());
    JsonDataIterator::iterate(data, translator);
    return toCompact(data);
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
    void readsThroughParameters()
    {
        TextManagerReferenceParameters parameters(m_Manager, "de_DE");
        QCOMPARE(parameters.getText("B") + parameters.getShortText("B"), "bs");
        parameters.setReadMode(TextManagerReferenceParameters::ShortText);
        QCOMPARE(parameters.getText("B") + parameters.getText("C"), "sc");
        parameters.setReadMode(TextManagerReferenceParameters::ReadMode(2));
        WarningCapture warnings;
        QCOMPARE(parameters.getText("B"), "b");
        QCOMPARE(warnings.take(),
                 QStringList("Received invalid read mode, reading normal text version!"));

        QJsonObject document = parseObject(R"({"Content": {"A": {"text": "a"}}})");
        const TextManagerBase inMemory("de_DE", document); // its mutex is not recursive
        QCOMPARE(translate(inMemory, "type 3", R"({"labelTextId": "A"})"),
                 R"({"labelText":"a","labelTextId":"A"})");
    }

    void translates_data()
    {
        addTable(R"(
        steps          | object                                 | result                                 | warnings
        type 1         | {"labelTextId":"B"}                    | {"label":"b","labelShort":"s","labelTextId":"B"} |
        type 1         | {"labelTextId":"C"}                    | {"label":"c","labelShort":"c","labelTextId":"C"} |
        type 1; delete | {"labelTextId":"B","label":""}         | {"label":"b","labelShort":"s","labelTextId":""} |
        type 1; delete | {"labelTextId":"B","label":"kept"}     | {"label":"kept","labelTextId":"B"} |
        type 1; delete | {"labelTextId":"None"}                 | {"label":"","labelShort":"","labelTextId":""} |
        type 1 | {"labelTextId":"B","label":null} | {"label":"b","labelShort":"s","labelTextId":"B"}
        .. | JsonValue for 'Text' does not contain a string!
        type 1; delete | {"labelTextId":7,"label":8} | {"label":8,"labelTextId":7}
        .. | JsonValue for 'Text' does not contain a string!\nJsonValue for 'TextId' does not contain a string!
        type 1; delete | {"labelTextUrl":"x","labelTextId":"B","label":"o"}
        .. | {"label":"dynamic","labelTextId":"B","labelTextUrl":"x"} |
        type 1         | {"labelTextUrl":""}                    | {"label":"dynamic","labelTextUrl":""} |
        type 1 | {"labelTextUrl":"nowhere","labelTextId":"A","label":"o"}
        .. | {"label":"a","labelShort":"a","labelTextId":"A","labelTextUrl":"nowhere"}
        .. | Unable to read value for url "nowhere" !
        type 1 | {"labelTextUrl":7,"label":"o"} | {"label":"o","labelTextUrl":7}
        .. | Json value for labelTextUrl does not contain a string: QJsonValue(double, 7) !
        type 2; delete | {"labelTextUrl":7,"labelTextId":"A","labelText":8}
        .. | {"labelText":"a","labelTextId":"","labelTextUrl":7} |
        type 3; type 3; delete | {"labelTextUrl":"x","labelTextId":"B","labelText":"o"}
        .. | {"labelText":"b","labelTextId":"","labelTextUrl":"x"} |
        type 4 | {"labelTextId":"A","labelText":"kept","valueTextId":"B","valueText":""}
        .. | {"labelText":"kept","labelTextId":"A","valueText":"b","valueTextId":"B","valueTextShort":"s"} |
        type 4         | {"valueTextId":"B","valueText":"kept"} | {"valueText":"kept","valueTextId":"B"} |
        type 4; delete | {"valueTextId":[],"labelTextId":"B"}
        .. | {"labelText":"b","labelTextId":"","labelTextShort":"s","valueTextId":[]}
        .. | JsonValue for 'TextId' does not contain a string!
        type 1; type 5 | {"labelTextUrl":"x","labelTextId":"B"}
        .. | {"label":"b","labelShort":"s","labelTextId":"B","labelTextUrl":"x"} | Received unknown data type: 5 !
        type 0; type -1 | {"labelTextUrl":"x","labelTextId":"B"} | {"labelTextId":"B","labelTextUrl":"x"}
        .. | Received unknown data type: 0 !\nReceived unknown data type: -1 !
        keys i:t:; type 4 | {"i":"A","valueTextId":"A"}
        .. | {"i":"A","valueText":"a","valueTextId":"A","valueTextShort":"a"} |
        type 4; keys valueText:t:s | {"valueTextId":"NameOfA"}
        .. | {"s":"a","t":"a","valueText":"A","valueTextId":"NameOfA","valueTextShort":"A"} |
        keys i:t:; keys i::; delete | {"i":"A","labelTextUrl":"x"} | {"":"","i":"","labelTextUrl":"x","t":"a"} |
        )");
    }
    void translates()
    {
        m_Manager.setDynamicTextReader(m_Reader);
        WarningCapture warnings;
        QCOMPARE(translate(m_Manager, cell("steps"), cell("object")), cell("result"));
        QCOMPARE(warnings.take().join('\n'), cell("warnings"));
    }

    void asksTheDevice_data()
    {
        // The calls: nothing but what is asked for, without a look for the service or a
        // subscription.
        addTable(R"(
        selector                             | text    | calls          | warnings
        DeviceManager:Configuration:I:U[1]   | dynamic | getDynamicText |
        DeviceManager:Configuration:I:number | 7       | getDynamicText |
        DeviceManager:Configuration:I:blank  | a       | getDynamicText |
        DeviceManager:Configuration:I:empty | a | getDynamicText
        .. | Received an invalid dynamic text value QVariant(QVariantList, ()) !
        DeviceManager:Configuration:I:list | a | getDynamicText
        .. | Received an invalid dynamic text value QVariant(QVariantList, (QVariant(QString, "x"))) !
        DeviceManager:Configuration:I:U | a | getDynamicText | Error on reading dynamic text for selector: "URL" !
        DeviceManager:Configuration:I:display | a | getDynamicText | Error on reading dynamic text for selector: "URL" !
        Nobody:Configuration:I:U[1] | a | getDynamicText | Error on reading dynamic text for selector: "URL" !
        nonsense | a |  | Selectortext Url is invalid:  "URL"\nError on reading dynamic text for selector: "URL" !
        )");
    }
    void asksTheDevice()
    {
        DeviceService device(R"({"dynamicTexts": {"I": {
        "U[1]": {"Device": {"de_DE": "dynamic", "POSIX": "other"}},
        "number": {"Device": {"de_DE": 7}}, "blank": {"Device": {"de_DE": ""}},
        "empty": {"Device": {"de_DE": null}}, "list": {"Device": {"de_DE": ["x"]}},
        "display": {"Display": {"de_DE": "dynamic"}}}}})");
        QProcess monitor; // of what the bus is asked, other than to connect, and what the device is
        monitor.start("dbus-monitor", {"--profile", "member='NameHasOwner'",
                                       "member='GetNameOwner'", "member='AddMatch'",
                                       "type='method_call',interface='Interface.Configuration'"});
        const auto callsUntil = [&](const QByteArray& last) {
            QByteArray calls;
            while (!calls.contains(last) && (monitor.canReadLine() || monitor.waitForReadyRead()))
                calls += ' ' + monitor.readLine().trimmed().split('\t').last();
            return QString(calls).simplified();
        };
        callsUntil("NameLost"); // of the monitor: it has begun
        const QString object = R"({"labelText":"%1","labelTextId":"%2","labelTextUrl":"%3"})";
        const QString selector = cell("selector");
        const QString warning = cell("warnings").replace("URL", selector);
        const QString leftId = cell("text") == "a" ? "" : "A"; // one that was not used
        WarningCapture warnings;
        QCOMPARE(translate(m_Manager, "type 2", object.arg("o", "A", selector)),
                 object.arg(cell("text"), "A", selector));
        QCOMPARE(warnings.take().join('\n'), warning);
        QCOMPARE(translate(m_Manager, "type 2; delete", object.arg("o", "A", selector)),
                 object.arg(cell("text"), leftId, ""));
        QCOMPARE(warnings.take().join('\n'), warning);
        DeviceService::tell("Configuration.announceEnd");
        QCOMPARE(callsUntil("announceEnd"),
                 (cell("calls") + ' ' + cell("calls") + " announceEnd").simplified());
        monitor.kill();
        monitor.waitForFinished();
    }

    void walks()
    {
        const QByteArray json = R"({"n": "1", "z": {"n": "3"}, "l": [[{"n": "2"}], 5, []]})";
        const QJsonObject data = parseObject(json);
        QJsonValue walked = data;
        Visitor visitor;
        QCOMPARE(JsonDataIterator::iterate(walked, visitor), "123");
        QCOMPARE(data, parseObject(json));
        QCOMPARE(toCompact(walked),
                 R"({"l":[[{"n":"2","seen":2}],5,[]],"n":"1","seen":1,"z":{"n":"3","seen":3}})");
        constexpr int depth = 1024; // what the parser takes
        const QByteArray opened = QByteArray(R"({"o":)").repeated(depth - 1);
        walked = parseObject(opened + "{}" + QByteArray("}").repeated(depth - 1));
        runOnSmallStack([&] { JsonDataIterator::iterate(walked, visitor); });
        QCOMPARE(toCompact(walked).count("seen"), depth);
    }

    void keepsNoOldTexts()
    {
        QJsonObject document{
            {"Content", QJsonObject{{"A", QJsonObject{{"text", QString(999, 'x')}}}}}};
        const TextManagerBase manager("de_DE", document);
        const Parameters parameters(manager, "de_DE");
        Translator translator(parameters);
        translator.setConfiguration(Translator::ConfigurationAndProcessData);
        QJsonObject object{{"labelTextId", "A"}};
        QJsonValue value;
        const int before = peakMegabytes();
        for (int round = 0; round < 100'000; ++round) // as often as the language changes
            translator.compute(object, value);
        QVERIFY2(peakMegabytes() - before < 50, qPrintable(QString::number(peakMegabytes())));
    }

private:
    const Languages m_Files;
    Reader m_Reader{""};
    TextManagerBase m_Manager{m_Files.path(), "en_US", "short"};
};

QTEST_GUILESS_MAIN(JsonTranslationTest)
#include "tst_json_translation.moc"
