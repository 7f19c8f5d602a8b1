#include "LanguageFiles.h"
#include "Table.h"
#include "WarningCapture.h"

#include "LanguageInformation.h"
#include "TextManagerConverter.h"

#include <QTest>

namespace
{

/** The cell "value" as JSON; "@" stands for the whole document, "@KEY" for one of its members. */
QJsonValue valueToWrite(const QJsonObject& document)
{
    const QString value = cell("value");
    if (!value.startsWith('@'))
        return parseObject("{\"v\": " + value.toUtf8() + "}").value("v");
    return value == "@" ? QJsonValue(document) : document.value(value.mid(1));
}

/** Makes the call of the cell "call". */
int write(const QJsonValue& value, QJsonObject& document)
{
    const QString operation = cell("call").section(' ', 0, 0);
    const QString target = cell("call").section(' ', 1);
    if (operation == "json")
        return LanguageInformation().setJsonValue(target, value, document);
    TextManagerConverter converter("de_DE", document);
    QString text = value.toString();
    if (operation == "header")
        return converter.setHeaderText(
            static_cast<TextManagerDefinitions::HeaderInfo>(target.toInt()), text);
    return operation == "text" ? converter.setText(target, text)
                               : converter.setComment(target, text);
}

} // namespace

class LanguageEditingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writes_data();
    void writes();
    void reads();
    void replacesAndClearsTheContent();
};

void LanguageEditingTest::writes_data()
{
    addTable(R"(
        before                            | call         | value    | result | after                              | warning
        {}                                | json A/B/C   | "new"    | 0      | {"A": {"B": {"C": "new"}}}         |
        {"A": {"x": 1}}                   | json A/B/C   | "new"    | 0      | {"A": {"x": 1, "B": {"C": "new"}}} |
        {"A": {"B": "old"}}               | json A/B     | "new"    | 0      | {"A": {"B": "new"}}                |
        {"": 1}                           | json         | "new"    | 3      | same                               |
        {"A": {"childs": {}}}             | json A//B    | 1        | 0      | {"A": {"childs": {}, "": {"B": 1}}} |
        {"A": [1], "B": 1}                | json A       | []       | 0      | {"A": [], "B": 1}                  |
        {"A": {"b": 1}}                   | json A       | {"c": 2} | 0      | {"A": {"c": 2}}                    |
        {"A": {"B": null}}                | json A/B     | "new"    | 3      | same                               |
        {"A": {"B": "old"}}               | json A/B     | {}       | 3      | same                               |
        {"A": "old", "Z": 1}              | json A/B     | "new"    | 3      | same                               | Unable to find jsonObject for url: "A/B"
        {"A": {"B": [{}]}}                | json A/B/0/C | "new"    | 3      | same                               | Unable to find jsonObject for url: "B/0/C"
        {}                                | json A/B/C   | {"B": {}} | 0     | {"A": {"B": {"C": {"B": {}}}}}     |
        {"Z": {}}                         | json Z/A/B/C | {"B": 1} | 3      | {"Z": {"A": {"B": 1}}}             | Unable to find jsonObject for url: "B/C"
        {"A": {"B": {"t": 1}}}            | json A/B     | @A       | 0      | {"A": {"B": {"B": {"t": 1}}}}      |
        {"A": {"B": {"t": 1}}}            | json A       | @        | 0      | {"A": {"A": {"B": {"t": 1}}}}      |
        {"A": {"t": "x"}}                 | json N/t     | @A       | 3      | {"A": {"t": "x"}, "N": {"t": "x"}} |
        {"Content": {}}                   | text A/B     | "new"    | 0      | {"Content": {"A": {"childs": {"B": {"text": "new"}}}}} |
        {"Content": {"A": {"text": "a"}}} | comment A    | "new"    | 0      | {"Content": {"A": {"text": "a"}, "": {"comment": "new"}}} |
        {}                                | text A//     | "new"    | 0      | {"Content": {"A": {"childs": {"": {"childs": {"": {"text": "new"}}}}}}} | "empty jsonObject passed"
        {"Content": {"A": {"childs": {"B": {"text": 1}}}}} | text A/B | "new" | 3 | same                               |
        {"Content": {"A": {"childs": "x"}}} | comment A/B | "new"   | 3      | same                               | Unable to find jsonObject for url: "childs/B/comment"
        {"Header": {"language": "x"}}     | header 0     | "new"    | 0      | {"Header": {"language": "new"}}    |
        {"Content": {}}                   | header 1     | "new"    | 0      | {"Content": {}, "Header": {"subLanguage": "new"}} |
        {"Header": {"": "x"}}             | header 2     | "new"    | 3      | same                               | unknown Header Url : 2
        {"Content": {}}                   | header -7    | "new"    | 0      | {"Content": {}, "Header": "new"}   | unknown Header Url : -7
    )");
}

void LanguageEditingTest::writes()
{
    const QJsonObject before = parseObject(cell("before").toUtf8());
    QJsonObject document = before; // shared: the write must leave the other holder's copy alone
    const QJsonValue value = valueToWrite(document);
    WarningCapture capture;
    const int result = write(value, document);
    QCOMPARE(document, cell("after") == "same" ? before : parseObject(cell("after").toUtf8()));
    QCOMPARE(before, parseObject(cell("before").toUtf8()));
    QCOMPARE(value, valueToWrite(before));
    QCOMPARE(result, cell("result").toInt());
    QCOMPARE(capture.take().join('\n'), cell("warning"));
}

void LanguageEditingTest::reads()
{
    QJsonObject document =
        parseObject(R"({"Header": {"language": "de", "": "nameless"}, "Content": {
        "Menu": {"text": "Menü", "comment": "Titel", "childs": {"Number": {"text": 7}}}}})");
    TextManagerConverter converter("de_DE", document);
    WarningCapture capture;
    bool ok = false;
    QCOMPARE(converter.getComment("Menu", ok), QString("Titel"));
    QVERIFY(ok);
    QCOMPARE(converter.getComment("Menu/Number", ok), QString());
    QVERIFY(!ok);
    QCOMPARE(converter.getText("Menu/Number", ok), QString());
    QVERIFY(ok);
    QCOMPARE(converter.getHeaderText(TextManagerDefinitions::Language), QString("de"));
    const auto unknown = static_cast<TextManagerDefinitions::HeaderInfo>(2);
    QCOMPARE(converter.getHeaderText(unknown), QString("nameless"));
    QCOMPARE(capture.take(),
             (QStringList{"Invalid data type of jsonValue for url: \"Menu/Number/text\"",
                          "unknown Header Url : 2"}));
    QCOMPARE(converter.createJsonKeysFromUrl("A/B/D"), QString("A/childs/B/childs/D"));
    QCOMPARE(converter.createJsonKeysFromUrl("A"), QString());

    QString comment = "now listed";
    converter.setText("Menu/Load", "Laden");
    QCOMPARE(converter.getAvailableUrls(), QStringList("Menu"));
    converter.setComment("Menu/Load", comment);
    QCOMPARE(converter.getAvailableUrls(), (QStringList{"Menu", "Menu/Load"}));
}

void LanguageEditingTest::replacesAndClearsTheContent()
{
    QJsonObject document = parseObject(R"({"Header": {}, "Content": {"A": {}}})");
    TextManagerConverter converter("de_DE", document);
    QJsonObject content = parseObject(R"({"B": {}})");
    QCOMPARE(converter.replaceContent(content), false);
    QCOMPARE(document, parseObject(R"({"Header": {}, "Content": {"B": {}}})"));
    QCOMPARE(converter.replaceContent(document), false); // its "Content" goes before it is copied
    QCOMPARE(document, parseObject(R"({"Header": {}, "Content": {"Header": {}}})"));
    converter.clearContent();
    QCOMPARE(document, parseObject(R"({"Header": {}, "Content": {}})"));
    document.remove("Content");
    converter.clearContent();
    QCOMPARE(document, parseObject(R"({"Header": {}, "Content": {}})"));
}

QTEST_GUILESS_MAIN(LanguageEditingTest)
#include "tst_language_editing.moc"
