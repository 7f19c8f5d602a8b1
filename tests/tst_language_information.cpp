#include "LanguageFiles.h"
#include "Table.h"
#include "WarningCapture.h"

#include "LanguageInformation.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

namespace
{

const QString content = "Content";

/** A document with everything in its content that a walk can meet. */
QJsonObject languageDocument()
{
    return parseObject(R"({"Header": "no object", "Content": {
        "": {"text": "top", "childs": {"": {"text": "below"}}},
        "Menu": {"text": "Menu", "comment": "Title", "number": 7,
                 "Direct": {"text": "beside the container"},
                 "childs": {"Save": {"text": "Save", "comment": "Button"},
                            "": {"text": "empty key"},
                            "Deep": {"childs": {"Deeper": {"text": "deep"}}}}},
        "Flat": {"Inner": {"Innermost": {"text": "no containers"}}},
        "Broken": {"childs": "no object", "text": 3},
        "Leaf": "a string",
        "Childs": {"text": "an ordinary key"}}})");
}

/** @p value as JSON, in one line. */
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
    void collectsBelowAValue();
};

void LanguageInformationTest::readsValues_data()
{
    addTable(R"(
        url                            | value                             | URL in the warning
        Menu/text                      | ["Menu"]                          |
        Menu/number                    | [7]                               |
        Menu/Save/text                 | ["Save"]                          |
        Menu/Save                      |                                   |
        Menu/Direct/text               |                                   |
        Menu/childs/Save/text          |                                   |
        Menu/childs                    | [{"":{"text":"empty key"},"Deep":{"childs":{"Deeper":{"text":"deep"}}},"Save":{"comment":"Button","text":"Save"}}] |
        Menu/Deep/Deeper/text          | ["deep"]                          |
        Menu//text                     | ["empty key"]                     |
        Menu/Save/                     |                                   |
        /text                          | ["top"]                           |
        //text                         | ["below"]                         |
                                       | [{"childs":{"":{"text":"below"}},"text":"top"}] |
        Flat/Inner/Innermost/text      | ["no containers"]                 |
        Broken/Any/text                |                                   |
        No/Such/text                   |                                   |
        menu/text                      |                                   |
        Childs/text                    | ["an ordinary key"]               |
        Leaf                           | ["a string"]                      |
        Leaf/text                      |                                   | Leaf/text
        Menu/text/x                    |                                   |
        Menu/Save/text/more            |                                   | text/more
        Flat/Inner/Innermost/text/x/y/ |                                   | text/x/y/
    )");
}

void LanguageInformationTest::readsValues()
{
    const QString url = cell("URL in the warning");
    QStringList warnings;
    if (!url.isEmpty())
        warnings << "Unable to find jsonObject for url: \"" + url + '"';

    QJsonValue result = "untouched";
    WarningCapture capture;
    const bool isFound = LanguageInformation().readJsonValue(
        cell("url"), languageDocument().value(content).toObject(), result);
    QCOMPARE(isFound, !cell("value").isEmpty());
    QCOMPARE(toJson(result), isFound ? cell("value") : "[\"untouched\"]");
    QCOMPARE(capture.take(), warnings);
}

void LanguageInformationTest::readsStrings_data()
{
    addTable(R"(
        root    | url       | property | answer    | ok | URL in the warning
        Content | Menu/Save | comment  | Button    | 1  |
        Content | Menu/Load | comment  |           | 0  |
        Content | Leaf      |          | a string  | 1  |
        Content | Broken    | text     |           | 1  | Broken/text
        Content | Menu      |          |           | 1  | Menu
        Header  | Menu      | text     |           | 0  |
        Footer  | Menu      | text     |           | 0  |
    )");
}

void LanguageInformationTest::readsStrings()
{
    const LanguageInformation information;
    const QString warnedUrl = cell("URL in the warning");
    QStringList warnings;
    if (!warnedUrl.isEmpty())
        warnings << "Invalid data type of jsonValue for url: \"" + warnedUrl + '"';

    bool ok = false;
    WarningCapture capture;
    QCOMPARE(
        information.getObject(cell("url"), ok, languageDocument(), cell("root"), cell("property")),
        cell("answer"));
    QCOMPARE(ok, cell("ok") == "1");
    QCOMPARE(capture.take(), warnings);

    QString result = "untouched";
    const QString url = QStringList{cell("url"), cell("property")}.join('/');
    const bool isRead = information.readStringValueFromJson(
        url.endsWith('/') ? url.chopped(1) : url, ok,
        languageDocument().value(cell("root")).toObject(), result);
    QCOMPARE(isRead, !cell("answer").isEmpty());
    QCOMPARE(result, isRead ? cell("answer") : "untouched");
}

void LanguageInformationTest::listsUrls_data()
{
    // N stands for a text node, N+ for one with more in it; the URLs end in ";".
    addTable(R"(
        urls              | content
        A;A/B;A/b;B;      | {"B": N, "A": N+ "childs": {"b": N, "B": N}}}
        D/E;              | {"A": {"text": ""}, "B": {"text": 1, "comment": ""}, "D": {"childs": {"E": N}}}
        A/B;A/other/C;    | {"A": {"B": N, "other": {"C": N}}}
        AMenu;            | {"A": {"childs": {"childsMenu": N}}}
        childs;           | {"childs": N}
        ;childs/;childs/A;| {"": N+ "childs": {"A": N, "": N}}}
                          | {}
                          | [1]
    )");
}

void LanguageInformationTest::listsUrls()
{
    const QString node = R"({"text": "", "comment": "")";
    const QString json =
        cell("content").replace("N+", node + ',').replace("N", node + '}').prepend("{\"Content\":");
    const QStringList urls =
        LanguageInformation().getAvailableUrls(parseObject(json.toUtf8() + '}'));
    QCOMPARE(urls.isEmpty() ? QString() : urls.join(';') + ';', cell("urls"));
}

void LanguageInformationTest::collectsBelowAValue()
{
    QStringList urls = {"kept"};
    const QJsonValue menu = languageDocument().value(content)["Menu"];
    LanguageInformation().collectUrls(menu, "A/childs/Menu", urls);
    QCOMPARE(urls, (QStringList{"kept", "A/Menu/Save"}));
    QCOMPARE(LanguageInformation().getAvailableUrls(QJsonObject()), QStringList());
}

QTEST_GUILESS_MAIN(LanguageInformationTest)
#include "tst_language_information.moc"
