#include "LanguageFiles.h"
#include "ToolRun.h"

#include <QJsonArray>
#include <QProcess>
#include <QTest>

namespace
{

const QString deDe = QStringLiteral("de_DE");
const QString enUs = QStringLiteral("en_US");

/** Writes "Menu" and "Menu/Save" in two languages, the second only in one, and short texts. */
void writeMenu(const LanguageFiles& files)
{
    files.write(deDe, R"({"Header": {"language": "de", "subLanguage": "formal"},
        "Content": {"Menu": {"text": "Menü", "comment": "Titel"}}})");
    files.write(enUs, R"({"Content": {"Menu": {"text": "Menu", "comment": "Title", "childs": {
        "Save": {"text": "Save", "comment": "Button"},
        "Number": {"text": 1, "comment": "a fault"}}}}})");
    files.write(QStringLiteral("short/de_DE"), R"({"Content": {"Menu": {"text": "M"}}})");
}

} // namespace

class ToolLookUpsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data();
    void answers();
    void answersForMachines();
    void namesFilesThatAreLeftOut_data();
    void namesFilesThatAreLeftOut();
    void keepsSilentAboutTheCurrentDirectory();
    void saysWhenTheResultCannotBeWritten();
};

void ToolLookUpsTest::answers_data()
{
    QTest::addColumn<QString>("words"); // DIR stands for the folder
    QTest::addColumn<int>("exitStatus");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("message"); // a part of standard error; empty: there is none

    const auto row = [](const char* words, int status, const char* output, const char* message) {
        QTest::newRow(words) << words << status << QString::fromUtf8(output)
                             << QString::fromUtf8(message);
    };
    row("get DIR Menu --language de_DE", 0, "Menü\n", "");
    row("get DIR Menu", 0, "Menu\n", "");
    row("get DIR Menu Menu/Save --language de_DE", 0, "Menü\nSave\n",
        "textmanager: Menu/Save: no text in de_DE, en_US answers.\n");
    row("get DIR Menu --comment --language de_DE", 0, "Titel\n", "");
    row("get DIR Menu --short --short-folder short --language de_DE", 0, "M\n", "");
    row("get DIR Menu/Save --short --short-folder short --language de_DE", 0, "Save\n",
        "no short text in de_DE, the full text of en_US answers");
    row("get DIR Menu/Svae Menu", 1, "Menu\n",
        "Menu/Svae: no text (en_US: not in its file, POSIX: not loaded). Did you mean Menu/Save?");
    row("get DIR save --language de_DE", 1, "", "Did you mean Menu/Save?");
    row("get DIR Menu/Number", 1, "", "en_US: empty or no string");
    row("get DIR Nothing/like/this", 1, "", "not loaded).\n");
    row("languages DIR", 0, "de_DE\nen_US\n", "");
    row("urls DIR", 0, "Menu\nMenu/Save\n", "");
    row("urls DIR --language de_DE", 0, "Menu\n", "");
    row("urls DIR --language fr_FR", 0, "Menu\nMenu/Save\n",
        "language 'fr_FR' is not loaded, 'en_US' answers; loaded are: de_DE, en_US.");
    row("urls DIR/short --language fr_FR", 1, "", "'fr_FR' is not loaded; loaded are: de_DE.");
    row("header DIR --language de_DE", 0, "language: de\nsubLanguage: formal\n", "");

    row("get DIR", 2, "", "get: URL... is missing.");
    row("get DIR Menu --short", 2, "", "--short needs --short-folder NAME.");
    row("get DIR Menu --short --comment", 2, "", "exclude each other");
    row("get DIR Menu --short-folder no", 2, "", "/no': there is no such folder.");
    row("get DIR/de_DE.json Menu", 2, "", "it is no folder.");
    row("urls DIR more", 2, "", "urls: unexpected argument 'more'.");
    row("urls DIR --format xml", 2, "", "unknown format 'xml': it is text or json.");
    row("urls DIR --lang de_DE", 2, "", "Unknown option 'lang'.\nSee 'textmanager urls --help'.");
    row("gte DIR Menu", 2, "", "there is no command 'gte'. Did you mean get?");
    row("languages DIR/nowhere", 2, "", "there is no such folder.");
}

void ToolLookUpsTest::answers()
{
    QFETCH(QString, words);
    QFETCH(QString, message);
    const LanguageFiles files;
    writeMenu(files);

    words.replace(QStringLiteral("DIR"), files.path().chopped(1));
    const ToolRun run(words.split(QLatin1Char(' ')));
    QTEST(run.output(), "output");
    QVERIFY2(message.isEmpty() ? run.messages().isEmpty() : run.messages().contains(message),
             qPrintable(run.messages()));
    QTEST(run.exitStatus(), "exitStatus");
}

void ToolLookUpsTest::answersForMachines()
{
    const LanguageFiles files;
    writeMenu(files);
    const QStringList json = {QStringLiteral("--format"), QStringLiteral("json")};
    const auto run = [&](const char* command, const QStringList& more) {
        return ToolRun(QStringList{QLatin1String(command), files.path()} + json + more)
            .outputObject();
    };

    QCOMPARE(run("get", {QStringLiteral("Menu"), QStringLiteral("Nowhere")}), parseObject(R"({
        "answers": [{"url": "Menu", "found": true, "text": "Menu", "language": "en_US"},
                    {"url": "Nowhere", "found": false, "text": "", "language": ""}]})"));
    QCOMPARE(run("languages", {}),
             parseObject(R"({"languages": ["de_DE", "en_US"], "leftOut": []})"));
    QCOMPARE(run("urls", {}),
             parseObject(R"({"language": "en_US", "urls": ["Menu", "Menu/Save"]})"));
    QCOMPARE(run("header", {QStringLiteral("--language"), deDe}),
             parseObject(R"({"language": "de", "subLanguage": "formal"})"));
}

void ToolLookUpsTest::namesFilesThatAreLeftOut_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("fault");

    QTest::newRow("a comma is missing") << QByteArray("{\n  \"Content\": {}\n  \"Header\": {}\n}")
                                        << 3 << 10 << "unexpected string literal; expected '}'";
    QTest::newRow("columns count characters")
        << QByteArray("{\"Content\": {\"ä日本\": x}}") << 1 << 21 << "invalid literal";
    QTest::newRow("a quotation mark is missing")
        << QByteArray("{\r\n\"Content\": \"no end\r\n}") << 2 << 19 << "control character";
    QTest::newRow("half written") << QByteArray("{\"Content\": {") << 1 << 14 << "end of input";
    QTest::newRow("empty") << QByteArray("") << 1 << 1 << "end of input";
    QTest::newRow("only Qt's parser refuses it")
        << QByteArray(2000, '[') + QByteArray(2000, ']') << 1 << 1025 << "nested";
    QTest::newRow("another key") << QByteArray("{\"content\": {}}") << 1 << 1
                                 << "expected an object with \"Content\", found an object with "
                                    "the keys (content)";
    QTest::newRow("no object") << QByteArray("[]") << 1 << 1 << "found an array";
}

void ToolLookUpsTest::namesFilesThatAreLeftOut()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, fault);
    const LanguageFiles files;
    writeMenu(files);
    files.write(QStringLiteral("fr_FR"), bytes);

    const ToolRun run({QStringLiteral("languages"), files.path(), QStringLiteral("--format=json")});
    QCOMPARE(run.exitStatus(), 1);
    const QJsonArray leftOut = run.outputObject().value(QStringLiteral("leftOut")).toArray();
    QCOMPARE(leftOut.size(), 1);
    const QJsonObject finding = leftOut.first().toObject();
    QCOMPARE(finding.value(QStringLiteral("file")).toString(), files.file(QStringLiteral("fr_FR")));
    QVERIFY2(finding.value(QStringLiteral("fault")).toString().contains(fault),
             qPrintable(run.messages()));
    QTEST(finding.value(QStringLiteral("line")).toInt(), "line");
    QTEST(finding.value(QStringLiteral("column")).toInt(), "column");
}

void ToolLookUpsTest::keepsSilentAboutTheCurrentDirectory()
{
    const LanguageFiles files;
    writeMenu(files);
    const LanguageFiles current;
    current.write(QStringLiteral("package"), "{}");
    const ToolRun run({QStringLiteral("languages"), files.path()}, QByteArray(), current.path());
    QCOMPARE(run.messages(), QString());
    QCOMPARE(run.exitStatus(), 0);

    files.write(QStringLiteral("de_DE.backup"), "{\"Content\": {}}");
    QVERIFY(ToolRun({QStringLiteral("languages"), files.path()})
                .messages()
                .contains(QStringLiteral("de_DE.backup.json: replaced by de_DE.json")));
}

void ToolLookUpsTest::saysWhenTheResultCannotBeWritten()
{
    const LanguageFiles files;
    writeMenu(files);
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(TEXTMANAGER_PROGRAM), {QStringLiteral("languages"), files.path()});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 2);
    QVERIFY(process.readAllStandardError().contains("cannot write the result"));
}

QTEST_GUILESS_MAIN(ToolLookUpsTest)
#include "tst_tool_look_ups.moc"
