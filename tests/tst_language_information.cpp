#include "LanguageFiles.h"
#include "WarningCapture.h"

#include "LanguageInformation.h"

#include <QTest>

namespace
{

/** A content tree with everything in it that a walk can meet. */
QJsonObject contentTree()
{
    return parseObject(R"({
        "": {"text": "top, nameless", "childs": {"": {"text": "below, nameless"}}},
        "Menu": {
            "text": "Menu",
            "comment": "Title",
            "number": 7,
            "Direct": {"text": "beside the container"},
            "childs": {
                "Save": {"text": "Save", "comment": "Button"},
                "": {"text": "empty key"},
                "Deep": {"childs": {"Deeper": {"text": "deep"}}}
            }
        },
        "Flat": {"Inner": {"Innermost": {"text": "no containers"}}},
        "Broken": {"childs": "no object", "text": 3},
        "Leaf": "a string",
        "Childs": {"text": "an ordinary key"}
    })");
}

QJsonObject document(const QByteArray& content)
{
    return {{QStringLiteral("Content"), parseObject(content)}};
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
    void readsPropertiesOfNodes();
    void readsHeaders_data();
    void readsHeaders();
    void listsUrls_data();
    void listsUrls();
    void collectsBelowAValue();
    void walksAsDeepAsTheParserGoes();
};

void LanguageInformationTest::readsValues_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QJsonValue>("value"); // undefined: not found
    QTest::addColumn<QStringList>("warnings");

    const auto found = [](const char* url, const QJsonValue& value) {
        QTest::newRow(url) << QString::fromLatin1(url) << value << QStringList();
    };
    const auto notFound = [](const char* url, const QStringList& warnings = {}) {
        QTest::newRow(url) << QString::fromLatin1(url) << QJsonValue(QJsonValue::Undefined)
                           << warnings;
    };
    const auto missingObject = [](const char* rest) {
        return QStringList{
            QStringLiteral("Unable to find jsonObject for url: \"%1\"").arg(QLatin1String(rest))};
    };

    found("Menu/text", QStringLiteral("Menu"));
    found("Menu/number", 7);
    found("Menu/Save/text", QStringLiteral("Save"));
    found("Menu/Deep/Deeper/text", QStringLiteral("deep"));
    found("Menu//text", QStringLiteral("empty key"));
    found("/text", QStringLiteral("top, nameless"));
    found("//text", QStringLiteral("below, nameless"));
    found("Flat/Inner/Innermost/text", QStringLiteral("no containers"));
    found("Childs/text", QStringLiteral("an ordinary key"));
    found("Leaf", QStringLiteral("a string"));
    found("Menu/childs", contentTree()[QLatin1String("Menu")].toObject()[QLatin1String("childs")]);
    found("", contentTree()[QString()]);

    notFound("menu/text");
    notFound("Menu/Save"); // the last key is never looked up in the container
    notFound("Menu/Save/");
    notFound("Menu/Direct/text"); // the container hides what stands beside it
    notFound("Menu/childs/Save/text");
    notFound("Broken/Any/text"); // a container that is no object
    notFound("No/Such/text");

    notFound("Leaf/text", missingObject("Leaf/text"));
    notFound("Menu/text/x"); // with a container, "text" is looked up in it, and is not there
    notFound("Menu/Save/text/more", missingObject("text/more"));
    notFound("Menu/Save/text/more/and/more", missingObject("text/more/and/more"));
    notFound("Flat/Inner/Innermost/text/x", missingObject("text/x"));
}

void LanguageInformationTest::readsValues()
{
    QFETCH(QString, url);
    QFETCH(QJsonValue, value);
    QFETCH(QStringList, warnings);

    const QJsonValue untouched = QStringLiteral("untouched");
    QJsonValue result = untouched;
    WarningCapture capture;
    QCOMPARE(LanguageInformation().readJsonValue(url, contentTree(), result), !value.isUndefined());
    QCOMPARE(result, value.isUndefined() ? untouched : value);
    QCOMPARE(capture.take(), warnings);
}

void LanguageInformationTest::readsStrings_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<bool>("isRead");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QStringList>("warnings");

    QTest::newRow("a string") << "Menu/Save/text" << true << true << QStringList();
    QTest::newRow("nothing: not ok") << "Menu/Load/text" << false << false << QStringList();
    QTest::newRow("a number: found, yet not read")
        << "Broken/text" << false << true
        << QStringList{QStringLiteral("Invalid data type of jsonValue for url: \"Broken/text\"")};
    QTest::newRow("a node: found, yet not read")
        << "Menu" << false << true
        << QStringList{QStringLiteral("Invalid data type of jsonValue for url: \"Menu\"")};
}

void LanguageInformationTest::readsStrings()
{
    QFETCH(QString, url);
    QFETCH(bool, isRead);

    bool ok = false;
    QString result = QStringLiteral("untouched");
    WarningCapture capture;
    QCOMPARE(LanguageInformation().readStringValueFromJson(url, ok, contentTree(), result), isRead);
    QTEST(ok, "ok");
    QTEST(capture.take(), "warnings");
    QCOMPARE(result, isRead ? QStringLiteral("Save") : QStringLiteral("untouched"));
}

void LanguageInformationTest::readsPropertiesOfNodes()
{
    const LanguageInformation information;
    const QJsonObject languageDocument{{QStringLiteral("Content"), contentTree()},
                                       {QStringLiteral("Header"), QStringLiteral("no object")}};
    const QString content = QStringLiteral("Content");
    const QString text = QStringLiteral("text");
    WarningCapture capture;

    bool ok = false;
    QCOMPARE(information.getObject(QStringLiteral("Menu/Save"), ok, languageDocument, content,
                                   QStringLiteral("comment")),
             QStringLiteral("Button"));
    QVERIFY(ok);
    QCOMPARE(
        information.getObject(QStringLiteral("Leaf"), ok, languageDocument, content, QString()),
        QStringLiteral("a string"));
    QVERIFY(ok);
    QCOMPARE(information.getObject(QStringLiteral("Menu"), ok, languageDocument,
                                   QStringLiteral("Header"), text),
             QString());
    QVERIFY(!ok);
    QCOMPARE(capture.take(), QStringList());

    QCOMPARE(information.getObject(QStringLiteral("Broken"), ok, languageDocument, content, text),
             QString());
    QVERIFY(ok);
    QCOMPARE(capture.take(), QStringList{QStringLiteral(
                                 "Invalid data type of jsonValue for url: \"Broken/text\"")});
}

void LanguageInformationTest::readsHeaders_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("subLanguage");
    QTest::addColumn<int>("warnings");

    QTest::newRow("both") << QByteArray(R"({"Header": {"language": "de", "subLanguage": "CH"}})")
                          << "de"
                          << "CH" << 0;
    QTest::newRow("one missing") << QByteArray(R"({"Header": {"subLanguage": "CH"}})") << ""
                                 << "CH" << 0;
    QTest::newRow("a number") << QByteArray(R"({"Header": {"language": 1, "subLanguage": "CH"}})")
                              << ""
                              << "CH" << 1;
    QTest::newRow("no object") << QByteArray(R"({"Header": "de"})") << ""
                               << "" << 0;
}

void LanguageInformationTest::readsHeaders()
{
    QFETCH(QByteArray, json);
    WarningCapture capture;
    const auto info = LanguageInformation().getLanguageHeaderInfo(parseObject(json));
    QTEST(info.first, "language");
    QTEST(info.second, "subLanguage");
    QTEST(capture.take().size(), "warnings");
}

void LanguageInformationTest::listsUrls_data()
{
    QTest::addColumn<QJsonObject>("languageDocument");
    QTest::addColumn<QStringList>("urls");

    const auto row = [](const char* name, const QByteArray& content, const QStringList& urls) {
        QTest::newRow(name) << document(content) << urls;
    };
    const auto list = [](const char* urls) {
        return QString::fromLatin1(urls).split(QLatin1Char(' '));
    };

    row("a node before its children, siblings by key",
        R"({"B": {"text": "", "comment": ""},
            "A": {"text": "", "comment": "", "childs": {"b": {"text": "", "comment": ""},
                                                        "B": {"text": "", "comment": ""}}}})",
        list("A A/B A/b B"));
    row("text and comment must both be strings",
        R"({"A": {"text": ""}, "B": {"text": 1, "comment": ""}, "C": {"text": "", "comment": null},
            "D": {"childs": {"E": {"text": "", "comment": ""}}}})",
        list("D/E"));
    row("nodes without a container, and in any other member",
        R"({"A": {"B": {"text": "", "comment": ""},
                  "other": {"C": {"text": "", "comment": ""}}}})",
        list("A/B A/other/C"));
    row("a key that begins with childs loses that beginning",
        R"({"A": {"childs": {"childsMenu": {"text": "", "comment": ""}}}})", list("AMenu"));
    row("a top-level childs stays", R"({"childs": {"text": "", "comment": ""}})", list("childs"));
    row("an empty key is listed; at the top it is lost from its children",
        R"({"": {"text": "", "comment": "", "childs": {"A": {"text": "", "comment": ""},
            "": {"text": "", "comment": ""}}}})",
        {QString(), QStringLiteral("childs/"), QStringLiteral("childs/A")});
    row("empty content", "{}", {});
    QTest::newRow("no content") << parseObject(R"({"Header": {}})") << QStringList();
    QTest::newRow("content is no object") << parseObject(R"({"Content": [1]})") << QStringList();
}

void LanguageInformationTest::listsUrls()
{
    QFETCH(QJsonObject, languageDocument);
    WarningCapture capture;
    QTEST(LanguageInformation().getAvailableUrls(languageDocument), "urls");
    QCOMPARE(capture.take(), QStringList());
}

void LanguageInformationTest::collectsBelowAValue()
{
    QStringList urls = {QStringLiteral("kept")};
    const QJsonValue menu = contentTree().value(QStringLiteral("Menu"));
    LanguageInformation().collectUrls(menu, QStringLiteral("A/childs/Menu"), urls);
    QCOMPARE(urls, (QStringList{QStringLiteral("kept"), QStringLiteral("A/Menu/Save")}));
}

void LanguageInformationTest::walksAsDeepAsTheParserGoes()
{
    constexpr int depth = 500;
    QJsonObject node = parseObject(R"({"text": "bottom", "comment": ""})");
    QStringList keys = {QStringLiteral("K")};
    for (int level = 1; level < depth; ++level) {
        node = QJsonObject{{QStringLiteral("childs"), QJsonObject{{keys.first(), node}}}};
        keys.append(keys.first());
    }
    const QJsonObject languageDocument{
        {QStringLiteral("Content"), QJsonObject{{keys.first(), node}}}};
    const QString url = keys.join(QLatin1Char('/'));

    bool ok = false;
    QCOMPARE(LanguageInformation().getObject(url, ok, languageDocument, QStringLiteral("Content"),
                                             QStringLiteral("text")),
             QStringLiteral("bottom"));
    QCOMPARE(LanguageInformation().getAvailableUrls(languageDocument), QStringList{url});
}

QTEST_GUILESS_MAIN(LanguageInformationTest)
#include "tst_language_information.moc"
