#include "LanguageFiles.h"
#include "Table.h"
#include "WarningCapture.h"

#include "LanguageInformation.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

namespace
{

/** A document with everything in its content that a walk can meet. */
QJsonObject languageDocument()
{
    return parseObject(R"({"Header": "no object", "Content": {
        "": {"text": "top", "childs": {"": {"text": "below"}}},
        "Menu": {"text": "Menu", "comment": "Title", "number": 7, "Direct": {"text": "hidden"},
                 "childs": {"Save": {"text": "Save", "comment": "Button"},
                            "": {"text": "empty key"},
                            "Deep": {"childs": {"Deeper": {"text": "deep"}}}}},
        "Flat": {"Inner": {"Innermost": {"text": "no containers"}}},
        "Broken": {"childs": "no object", "text": 3},
        "Leaf": "a string",
        "Childs": {"text": "an ordinary key"}}})");
}

QString toJson(const QJsonValue& value)
{
    return QString::fromUtf8(QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact));
}

} // namespace

class LanguageInformationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsValues_data();
    void readsValues();
    void readsStrings_data();
    void readsStrings();
    void listsUrls_data();
    void listsUrls();
};

void LanguageInformationTest::readsValues_data()
{
    addTable(R"(
        url                            | value               | warning
        Menu/text                      | ["Menu"]            |
        Menu/number                    | [7]                 |
        Menu/Save/text                 | ["Save"]            |
        Menu/Save                      |                     |
        Menu/Direct/text               |                     |
        Menu/childs/Save/text          |                     |
        Flat/Inner                     | [{"Innermost":{"text":"no containers"}}] |
        Menu/Deep/Deeper/text          | ["deep"]            |
        Menu//text                     | ["empty key"]       |
        Menu/Save/                     |                     |
        /text                          | ["top"]             |
        //text                         | ["below"]           |
                                       | [{"childs":{"":{"text":"below"}},"text":"top"}] |
        Flat/Inner/Innermost/text      | ["no containers"]   |
        Broken/Any/text                |                     |
        No/Such/text                   |                     |
        menu/text                      |                     |
        Childs/text                    | ["an ordinary key"] |
        Leaf/text                      |                     | Unable to find jsonObject for url: "Leaf/text"
        Menu/text/x                    |                     |
        Menu/Save/text/more            |                     | Unable to find jsonObject for url: "text/more"
        Flat/Inner/Innermost/text/x/y/ |                     | Unable to find jsonObject for url: "text/x/y/"
    )");
}

void LanguageInformationTest::readsValues()
{
    QJsonValue result = "untouched";
    WarningCapture capture;
    const bool isFound = LanguageInformation().readJsonValue(
        cell("url"), languageDocument()["Content"].toObject(), result);
    QCOMPARE(isFound, !cell("value").isEmpty());
    QCOMPARE(toJson(result), isFound ? cell("value") : "[\"untouched\"]");
    QCOMPARE(capture.take().join('\n'), cell("warning"));
}

void LanguageInformationTest::readsStrings_data()
{
    addTable(R"(
        root    | url       | property | answer   | ok | warning
        Content | Menu/Save | comment  | Button   | 1  |
        Content | Menu/Load | comment  |          | 0  |
        Content | Leaf      |          | a string | 1  |
        Content | Broken    | text     |          | 1  | Invalid data type of jsonValue for url: "Broken/text"
        Content | Menu      |          |          | 1  | Invalid data type of jsonValue for url: "Menu"
        Header  | Menu      | text     |          | 0  |
        Footer  | Menu      | text     |          | 0  |
    )");
}

void LanguageInformationTest::readsStrings()
{
    bool ok = cell("ok") == "0";
    WarningCapture capture;
    QCOMPARE(LanguageInformation().getObject(cell("url"), ok, languageDocument(), cell("root"),
                                             cell("property")),
             cell("answer"));
    QCOMPARE(ok, cell("ok") == "1");
    QCOMPARE(capture.take().join('\n'), cell("warning"));
}

void LanguageInformationTest::listsUrls_data()
{
    // N stands for a text node, N+ for one with more in it; each URL ends in ";".
    addTable(R"(
        urls              | content
        A;A/B;A/b;B;      | {"B": N, "A": N+ "childs": {"b": N, "B": N}}}
        D/E;              | {"A": {"text": ""}, "B": {"text": 1, "comment": ""}, "D": {"childs": {"E": N}}}
        A/B;A/other/C;    | {"A": {"B": N, "other": {"C": N}}}
        AMenu;            | {"A": {"childs": {"childsMenu": N}}}
        childs;           | {"childs": N}
        ;childs/;childs/A;| {"": N+ "childs": {"A": N, "": N}}}
                          | [1]
    )");
}

void LanguageInformationTest::listsUrls()
{
    const QString node = R"({"text": "", "comment": "")";
    const QString content = cell("content").replace("N+", node + ',').replace("N", node + '}');
    const QByteArray json = "{\"Content\": " + content.toUtf8() + '}';
    const QStringList urls = LanguageInformation().getAvailableUrls(parseObject(json));
    QCOMPARE(urls.isEmpty() ? QString() : urls.join(';') + ';', cell("urls"));
}

QTEST_GUILESS_MAIN(LanguageInformationTest)
#include "tst_language_information.moc"
