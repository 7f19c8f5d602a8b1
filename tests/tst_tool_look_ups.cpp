#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"

#include <QJsonArray>
#include <QTest>

namespace
{

/** Writes Menu in two languages, what is below it in one, and a short text. */
void writeMenu(const LanguageFiles& files)
{
    files.write("de_DE", R"({"Header": {"language": "de", "subLanguage": "formal"},
        "Content": {"Menu": {"text": "Menü", "comment": "Titel"}}})");
    files.write("en_US", R"({"Content": {"Menu": {"text": "Menu", "comment": "Title", "childs": {
        "Save": {"text": "Save", "comment": "Button"}, "Number": {"text": 1, "comment": ""}}}}})");
    files.write("short/de_DE", R"({"Content": {"Menu": {"text": "M"}}})");
}

} // namespace

class ToolLookUpsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data();
    void answers();
    void namesFilesThatAreLeftOut_data();
    void namesFilesThatAreLeftOut();
    void keepsSilentAboutTheCurrentDirectory();
};

void ToolLookUpsTest::answers_data()
{
    // What follows "<" is standard input.
    addTable(R"(
        words                                                     | exit | output             | message
        get DIR Menu --language de_DE                             | 0    | Menü\n             |
        get DIR Menu                                              | 0    | Menu\n             |
        get DIR Menu Menu/Save --language de_DE                   | 0    | Menü\nSave\n       | textmanager: Menu/Save: no text in de_DE, en_US answers.\n
        get DIR Menu --comment --language de_DE                   | 0    | Titel\n            |
        get DIR Menu --short --short-folder short --language de_DE | 0   | M\n                |
        get DIR Menu/Save --short --short-folder short --language de_DE | 0 | Save\n          | no short text in de_DE, the full text of en_US answers
        get DIR Menu/Svae Menu                                    | 1    | Menu\n             | Menu/Svae: no text (en_US: not in its file, POSIX: not loaded). Did you mean Menu/Save?
        get DIR save --language de_DE                             | 1    |                    | Did you mean Menu/Save?
        get DIR Menu/Number                                       | 1    |                    | en_US: empty or no string
        get DIR Nothing/like/this                                 | 1    |                    | POSIX: not loaded).\n
        get DIR Menu --format json                                | 0    | {"answers":[{"found":true,"language":"en_US","text":"Menu","url":"Menu"}]}\n |
        get DIR No --short --short-folder short --format json     | 1    | {"answers":[{"found":false,"isShortText":false,"language":"","text":"","url":"No"}]}\n | No: no text
        languages DIR                                             | 0    | de_DE\nen_US\n     |
        languages DIR --format json                               | 0    | {"languages":["de_DE","en_US"],"leftOut":[]}\n |
        urls DIR                                                  | 0    | Menu\nMenu/Save\n  |
        urls DIR --language fr_FR --format json                   | 0    | {"language":"en_US","urls":["Menu","Menu/Save"]}\n | language 'fr_FR' is not loaded, 'en_US' answers; loaded are: de_DE, en_US.
        urls DIR/short --language fr_FR                           | 1    |                    | 'fr_FR' is not loaded; loaded are: de_DE.
        header DIR --language de_DE                               | 0    | language: de\nsubLanguage: formal\n |
        header DIR --language de_DE --format json                 | 0    | {"language":"de","subLanguage":"formal"}\n |
        get DIR                                                   | 2    |                    | get: URL... is missing.
        get DIR Menu --short                                      | 2    |                    | --short needs --short-folder NAME.
        get DIR Menu --short --comment                            | 2    |                    | exclude each other
        get DIR Menu --short-folder no                            | 2    |                    | /no': there is no such folder.
        get DIR/de_DE.json Menu                                   | 2    |                    | it is no folder.
        get DIR Menu --language=                                  | 2    |                    | --language needs a key, such as de_DE.
        urls DIR more                                             | 2    |                    | urls: unexpected argument 'more'.
        urls DIR --format xml                                     | 2    |                    | unknown format 'xml': it is text or json.
        urls DIR --lang de_DE                                     | 2    |                    | Unknown option 'lang'.\nSee 'textmanager urls --help'.
        all DIR Menu                                              | 0    | {"de_DE":"Menü","en_US":"Menu"}\n |
        all DIR Menu/Save                                         | 0    | {"de_DE":"Save","en_US":"Save"}\n |
        all DIR Menu/Number                                       | 1    | {}\n              | Menu/Number: no language has a text there.
        all DIR Mneu                                              | 1    | {}\n              | Did you mean Menu?
        pick --language de_DE < {"de_DE": "d", "POSIX": "p"}      | 0    | d\n               | de_DE answers.
        pick --language fr_FR < {"de_DE": "d", "POSIX": ""}       | 0    | \n                | no text in fr_FR, POSIX answers.
        pick --format json < {"en_US": "e", "fr_FR": ""}          | 0    | {"found":true,"language":"en_US","text":"e","valid":false}\n | fr_FR: empty or no text; it is left out.\ntextmanager: the object is not valid: it has no POSIX.
        pick < {"fr_FR": "f"}                                     | 1    |                    | nor in a fallback language; there are: fr_FR.
        pick < {\n"POSIX": "p",\n"ä" "e"}                         | 2    |                    | standard input:3:7: malformed JSON
        pick < []                                                 | 2    |                    | standard input:1:1: found an array. Expected is an object
        pick more                                                 | 2    |                    | pick: unexpected argument 'more'.
        gte DIR Menu                                              | 2    |                    | there is no command 'gte'. Did you mean get?
    )");
}

void ToolLookUpsTest::answers()
{
    const LanguageFiles files;
    writeMenu(files);
    const QString folder = files.path().chopped(1);
    const QString words = cell("words").replace("DIR", folder);
    const ToolRun run(words.section(" < ", 0, 0).split(' '), words.section(" < ", 1).toUtf8());
    QCOMPARE(run.output(), cell("output"));
    QVERIFY2(cell("message").isEmpty() ? run.messages().isEmpty()
                                       : run.messages().contains(cell("message")),
             qPrintable(run.messages()));
    QCOMPARE(QString::number(run.exitStatus()), cell("exit"));
}

void ToolLookUpsTest::namesFilesThatAreLeftOut_data()
{
    addTable(R"(
        content                                  | line | column | fault
        {\n  "Content": {}\n  "Header": {}\n}    | 3    | 10     | unexpected string literal; expected '}'
        {"Content": {"ä日本": x}}                | 1    | 21     | invalid literal
        {\r\n"Content": "no end\r\n}             | 2    | 19     | control character
        {"Content": {                            | 1    | 14     | unexpected end of input
                                                 | 1    | 1      | unexpected end of input
        {"Content": {},\n "n": 1e400}            | 2    | 11     | number overflow
        DEEP                                     | 1    | 1025   | nested
        {"content": {}}                          | 1    | 1      | expected an object with "Content", found an object with the keys (content)
        []                                       | 1    | 1      | found an array
    )");
}

void ToolLookUpsTest::namesFilesThatAreLeftOut()
{
    const LanguageFiles files;
    writeMenu(files);
    const QString tooDeepForQtAlone = QString(2000, '[') + QString(2000, ']');
    files.write("fr_FR",
                cell("content").replace("\\r", "\r").replace("DEEP", tooDeepForQtAlone).toUtf8());

    const ToolRun run({"languages", files.path(), "--format=json"});
    QCOMPARE(run.exitStatus(), 1);
    const QJsonObject finding = run.outputObject().value("leftOut")[0].toObject();
    QCOMPARE(finding.value("file").toString(), files.file("fr_FR"));
    QVERIFY2(finding.value("fault").toString().contains(cell("fault")), qPrintable(run.messages()));
    QCOMPARE(QString::number(finding.value("line").toInt()), cell("line"));
    QCOMPARE(QString::number(finding.value("column").toInt()), cell("column"));
}

void ToolLookUpsTest::keepsSilentAboutTheCurrentDirectory()
{
    const LanguageFiles files;
    writeMenu(files);
    files.write("package", "{}");
    const ToolRun run({"languages", files.path() + "short"}, QByteArray(), files.path());
    QCOMPARE(run.messages(), QString());

    files.write("de_DE.backup", "{\"Content\": {}}");
    QVERIFY(ToolRun({"languages", files.path()})
                .messages()
                .contains("de_DE.backup.json: replaced by de_DE.json"));
}

QTEST_GUILESS_MAIN(ToolLookUpsTest)
#include "tst_tool_look_ups.moc"
