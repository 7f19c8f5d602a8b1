#include "LanguageFiles.h"
#include "Resources.h"
#include "Table.h"
#include "WarningCapture.h"

#include "LanguageInformation.h"
#include "TextManagerConverter.h"

#include <QJsonDocument>
#include <QMap>
#include <QTest>

#include <functional>

namespace
{

/** The cell as a document. N stands for a text node, N+ for one with more in it, and WALK for
 * everything that a walk can meet. */
QJsonObject documentIn(const QString& column)
{
    if (cell(column) == "WALK")
        return parseObject(R"({"Content": {
            "": {"text": "top", "childs": {"": {"text": "below"}}},
            "Menu": {"number": 7, "Direct": {"text": "hidden"},
                     "childs": {"Save": {}, "Deep": {"childs": {"Deeper": {"text": "deep"}}}}},
            "Flat": {"Childs": {"Inner": {"text": "no containers"}}},
            "Broken": {"childs": "no object", "Any": {"text": "beside"}}}})");
    const QString node = R"({"text": "", "comment": "")";
    return parseObject(cell(column).replace("N+", node + ',').replace("N", node + '}').toUtf8());
}

QJsonValue parseValue(const QString& json)
{
    return parseObject("{\"v\": " + json.toUtf8() + "}").value("v");
}

/** The cell "value" as JSON; "@" stands for the whole document, "@KEY" for one of its members. */
QJsonValue valueFor(const QJsonObject& document)
{
    const QString value = cell("value");
    if (!value.startsWith('@'))
        return parseValue(value);
    return value == "@" ? QJsonValue(document) : document.value(value.mid(1));
}

/** Makes the call of the cell "call". @return what came of it. */
QString call(const QJsonValue& value, QJsonObject& document)
{
    const QString operation = cell("call").section(' ', 0, 0);
    const QString target = cell("call").section(' ', 1);
    if (operation == "readJsonValue") {
        QJsonValue read = "untouched";
        const QJsonObject content = document["Content"].toObject();
        const bool isFound = LanguageInformation().readJsonValue(target, content, read);
        return QJsonDocument({{isFound ? "v" : "none", read}}).toJson(QJsonDocument::Compact);
    }
    if (operation == "setJsonValue")
        return QString::number(LanguageInformation().setJsonValue(target, value, document));

    TextManagerConverter converter("de_DE", document);
    const auto headerInfo = static_cast<TextManagerDefinitions::HeaderInfo>(target.toInt());
    QString text = value.toString();
    QJsonObject object = value.toObject();
    QJsonObject& content = cell("value") == "@" ? document : object; // itself, no copy
    bool ok = cell("result") == "not ok";
    const auto withFlag = [&ok](const QString& read) { return read + (ok ? "ok" : "not ok"); };
    const QMap<QString, std::function<QVariant()>> calls = {
        {"getText", [&] { return withFlag(converter.getText(target, ok)); }},
        {"getComment", [&] { return withFlag(converter.getComment(target, ok)); }},
        {"getHeaderText", [&] { return converter.getHeaderText(headerInfo); }},
        {"getAvailableUrls", [&] { return converter.getAvailableUrls().join(';'); }},
        {"setText", [&] { return converter.setText(target, text); }},
        {"setComment", [&] { return converter.setComment(target, text); }},
        {"setHeaderText", [&] { return converter.setHeaderText(headerInfo, text); }},
        {"replaceContent", [&] { return converter.replaceContent(content); }},
    };
    if (operation == "clearContent")
        converter.clearContent();
    return calls.value(operation, [] { return QVariant(); })().toString();
}

} // namespace

class LanguageInformationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void callsOnADocument_data()
    {
        addTable(R"(
        before | call | value | result | after | warning
        WALK | readJsonValue Menu/number            | null | {"v":7} | same |
        WALK | readJsonValue Menu/Save              | null | {"none":"untouched"} | same |
        WALK | readJsonValue Menu/Direct/text       | null | {"none":"untouched"} | same |
        WALK | readJsonValue Menu/Deep/Deeper/text  | null | {"v":"deep"} | same |
        WALK | readJsonValue Flat/Childs            | null | {"v":{"Inner":{"text":"no containers"}}} | same |
        WALK | readJsonValue Flat/Childs/           | null | {"none":"untouched"} | same |
        WALK | readJsonValue Flat/Childs/Inner/text | null | {"v":"no containers"} | same |
        WALK | readJsonValue Flat/Childs/Inner/text/x/y/ | null | {"none":"untouched"} | same
        .. | Unable to find jsonObject for url: "text/x/y/"
        WALK | readJsonValue //text                 | null | {"v":"below"} | same |
        WALK | readJsonValue                     | null | {"v":{"childs":{"":{"text":"below"}},"text":"top"}} | same |
        WALK | readJsonValue Broken/Any/text        | null | {"none":"untouched"} | same |
        WALK | readJsonValue flat/Childs            | null | {"none":"untouched"} | same |
        {"Content": {"childs": N, "B": N, "A": N+ "childs": {"b": N, "B": N}}}} | getAvailableUrls | null
        .. | A;A/B;A/b;B;childs | same |
        {"Content": {"A": {"B": N, "other": {"C": N}}, "B": {"text": ""}, "C": {"text": 1, "comment": ""},
        .. "D": {"childs": {"E": N}}}} | getAvailableUrls | null | A/B;A/other/C;D/E | same |
        {"Content": {"A": {"childs": {"childsMenu": N}}}} | getAvailableUrls | null | AMenu | same |
        {"Content": {"": N+ "childs": {"A": N, "": N}}}} | getAvailableUrls | null | ;childs/;childs/A | same |
        {"Content": [1]} | getAvailableUrls | null | | same |
        {"A": {"x": 1}}         | setJsonValue A/B/C   | "new"     | 0        | {"A": {"x": 1, "B": {"C": "new"}}} |
        {"": 1}                 | setJsonValue         | "new"     | 3        | same |
        {"A": {"childs": {}}}   | setJsonValue A//B    | 1         | 0        | {"A": {"childs": {}, "": {"B": 1}}} |
        {"A": {"b": 1}, "B": 1} | setJsonValue A       | {"c": 2}  | 0        | {"A": {"c": 2}, "B": 1} |
        {"A": {"B": null}}      | setJsonValue A/B     | "new"     | 3        | same |
        {"A": {"B": [{}]}} | setJsonValue A/B/0/C | "new" | 3 | same | Unable to find jsonObject for url: "B/0/C"
        {}                      | setJsonValue A/B/C   | {"B": {}} | 0        | {"A": {"B": {"C": {"B": {}}}}} |
        {"Z": {}} | setJsonValue Z/A/B/C | {"B": 1} | 3 | {"Z": {"A": {"B": 1}}}
        .. | Unable to find jsonObject for url: "B/C"
        {"A": {"B": {"t": 1}}}  | setJsonValue A/B     | @A        | 0        | {"A": {"B": {"B": {"t": 1}}}} |
        {"A": {"B": {"t": 1}}}  | setJsonValue A       | @         | 0        | {"A": {"A": {"B": {"t": 1}}}} |
        {"Content": {}} | setText A/B | "new" | 0 | {"Content": {"A": {"childs": {"B": {"text": "new"}}}}} |
        {"Content": {"A": {"text": "a"}}} | setComment A | "new" | 0
        .. | {"Content": {"A": {"text": "a"}, "": {"comment": "new"}}} |
        {} | setText A// | "new" | 0 | {"Content": {"A": {"childs": {"": {"childs": {"": {"text": "new"}}}}}}}
        .. | "empty jsonObject passed"
        {"Content": {"A": {"childs": "x"}}} | setComment A/B | "new" | 3 | same
        .. | Unable to find jsonObject for url: "childs/B/comment"
        {"Content": {}} | setHeaderText 1 | "new" | 0 | {"Content": {}, "Header": {"subLanguage": "new"}} |
        {"Header": {"": "x"}} | setHeaderText 2 | "new" | 3 | same | unknown Header Url : 2
        {"Content": {}} | setHeaderText -7 | "new" | 0 | {"Content": {}, "Header": "new"} | unknown Header Url : -7
        {"Header": {"language": "de"}} | getHeaderText 0      | null      | de       | same |
        {"Header": {"": "nameless"}} | getHeaderText 2 | null | nameless | same | unknown Header Url : 2
        {"Content": {"A": {"childs": {"B": {"text": 7}}}}} | getText A/B | null | ok | same
        .. | Invalid data type of jsonValue for url: "A/B/text"
        {"Content": {"A": {"text": "a"}}} | getComment A         | null      | not ok   | same |
        {"Content": {"A": {"text": "", "comment": ""}}} | getAvailableUrls     | null      | A        | same |
        {"Header": {}, "Content": {"A": {}}} | replaceContent | {"B": {}} | false | {"Header": {}, "Content": {"B": {}}}
        .. |
        {"Header": {}, "Content": {"A": {}}} | replaceContent | @ | false | {"Header": {}, "Content": {"Header": {}}} |
        {"Header": {}, "Content": {"A": {}}} | clearContent | null |  | {"Header": {}, "Content": {}} |
        {"Header": {}}          | clearContent         | null      |          | {"Header": {}, "Content": {}} |
        )");
    }
    void callsOnADocument()
    {
        const QJsonObject before = documentIn("before");
        QJsonObject document = before; // shared: the call must leave the other holder's copy alone
        const QJsonValue value = valueFor(document);
        QJsonObject seen; // while a write warns
        WarningCapture warnings([&](const QString& text) {
            seen = text.startsWith("Unable to find") ? document : seen;
            return QString();
        });
        QCOMPARE(call(value, document), cell("result"));
        QVERIFY(seen.isEmpty() || seen == document);
        QCOMPARE(document, cell("after") == "same" ? before : documentIn("after"));
        QCOMPARE(before, documentIn("before"));
        QCOMPARE(value, valueFor(before));
        QCOMPARE(warnings.take().join('\n'), cell("warning"));
    }

    void takesLittleMemory()
    {
        QJsonObject document;
        const int before = peakMegabytes();
        const QString url = (QString(100, 'k') + '/').repeated(2'000) + 'k';
        LanguageInformation().setJsonValue(url, "new", document);
        for (int key = 0; key < 2'000; ++key)
            document.insert(QString::number(key), "short");
        for (int round = 0; round < 200; ++round)
            LanguageInformation().setJsonValue("0", QString(1'000'000, 'x'), document);
        QVERIFY2(peakMegabytes() - before < 100, qPrintable(QString::number(peakMegabytes())));
    }
};

QTEST_GUILESS_MAIN(LanguageInformationTest)
#include "tst_language_information.moc"
