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
    return parseObject(R"({"Content": {
        "": {"text": "top", "childs": {"": {"text": "below"}}},
        "Menu": {"number": 7, "Direct": {"text": "hidden"},
                 "childs": {"Save": {}, "Deep": {"childs": {"Deeper": {"text": "deep"}}}}},
        "Flat": {"Childs": {"Inner": {"text": "no containers"}}},
        "Broken": {"childs": "no object"}}})");
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
    void listsUrls_data();
    void listsUrls();
};

void LanguageInformationTest::readsValues_data()
{
    addTable(R"(
        url                         | value        | warning
        Menu/number                 | [7]          |
        Menu/Save                   |              |
        Menu/Direct/text            |              |
        Menu/Deep/Deeper/text       | ["deep"]     |
        Flat/Childs                 | [{"Inner":{"text":"no containers"}}] |
        Flat/Childs/                |              |
        Flat/Childs/Inner/text      | ["no containers"] |
        Flat/Childs/Inner/text/x/y/ |              | Unable to find jsonObject for url: "text/x/y/"
        //text                      | ["below"]    |
                                    | [{"childs":{"":{"text":"below"}},"text":"top"}] |
        Broken/Any/text             |              |
        flat/Childs                 |              |
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

void LanguageInformationTest::listsUrls_data()
{
    // N stands for a text node, N+ for one with more in it; each URL ends in ";".
    addTable(R"(
        urls                | content
        A;A/B;A/b;B;childs; | {"childs": N, "B": N, "A": N+ "childs": {"b": N, "B": N}}}
        A/B;A/other/C;D/E;  | {"A": {"B": N, "other": {"C": N}}, "B": {"text": ""}, "C": {"text": 1, "comment": ""}, "D": {"childs": {"E": N}}}
        AMenu;              | {"A": {"childs": {"childsMenu": N}}}
        ;childs/;childs/A;  | {"": N+ "childs": {"A": N, "": N}}}
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
