#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"

#include <QProcess>
#include <QTest>

namespace
{

/** Writes Menu in two languages, what is below it in one, and a short text; and other folders. */
void writeFolders(const LanguageFiles& files)
{
    files.write("de_DE", R"({"Header": {"language": "de", "subLanguage": "formal"},
        "Content": {"Menu": {"text": "Menü", "comment": "Titel"}}})");
    files.write("en_US", R"({"Content": {"Menu": {"text": "Menu", "comment": "Title", "childs": {
        "Save": {"text": "Save", "comment": "Button"}, "Number": {"text": 1, "comment": ""}}}}})");
    files.write("short/de_DE", R"({"Content": {"Menu": {"text": "M"}}})");
    files.write("elsewhere/package", "{}"); // a current directory that nobody asks about
    files.write("data/known", R"([{"labelTextId": "Menu"}, {"own": "Menu/Svae"}])");
    LanguageFiles::writePath(files.path() + "data/a.cpp", "t.getText(\"Menu/\" + key, QString());");
    files.write("faulty/fr_FR", "{\r\n\"Content\":\r {} \"x\"}");
    for (const QString name : {"twice/de_DE", "twice/de_DE.backup"})
        files.write(name, R"({"Content": {}})");
}

} // namespace

class ToolLookUpsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data();
    void answers();
    void fitsIntoAShell_data();
    void fitsIntoAShell();
    void translatesEachLineAtOnce();
};

void ToolLookUpsTest::answers_data()
{
    // What follows "<" is standard input.
    addTable(R"(
        words                                                     | exit | output             | message
        get DIR Menu Menu/Save --language de_DE                   | 0    | Menü\nSave\n
        .. | textmanager: Menu/Save: no text in de_DE, en_US answers.\n
        get DIR Menu --comment --language de_DE                   | 0    | Titel\n            |
        get DIR Menu --short --short-folder short --language de_DE | 0   | M\n                |
        get DIR Menu/Save --short --short-folder short --language de_DE | 0 | Save\n
        .. | no short text in de_DE, the full text of en_US answers
        get DIR Menu/Svae Menu                                    | 1    | \nMenu\n
        .. | Menu/Svae: no text (en_US: not in its file, POSIX: not loaded). Did you mean Menu/Save?
        get DIR Menu --language de_de                             | 0    | Menu\n
        .. | language 'de_de' is not loaded. Did you mean de_DE?\n
        get DIR save --language de_DE                             | 1    |                    | Did you mean Menu/Save?
        get DIR Menu/Number                                       | 1    |
        .. | en_US: empty or no string
        get DIR Nothing/like/this                                 | 1    |                    | POSIX: not loaded).\n
        get DIR Menu --format json                                | 0
        .. | {"answers":[{"found":true,"language":"en_US","text":"Menu","url":"Menu"}]}\n |
        get DIR No --short --short-folder short --format json     | 1
        .. | {"answers":[{"found":false,"isShortText":false,"language":"","text":"","url":"No"}]}\n | No: no text
        usage DIR DIR/data                                        | 0
        .. | DIR/data/a.cpp:1:11: the URL begins with Menu/, the rest comes at run time.\n |
        usage DIR DIR/data/known.json --text-id-key own --unused  | 1
        .. | DIR/data/known.json:1:35: unknown Menu/Svae: no language has it. Did you mean Menu/Save?\n
        .. unused Menu/Save\n |
        usage DIR DIR/data --unused --format json                 | 0
        .. | {"atRunTime":[{"column":11,"file":"DIR/data/a.cpp","line":1,"url":"Menu/"}],"unknown":[],"unused":[]}\n |
        usage DIR DIR/nothing DIR/en_US                           | 2    |
        .. | DIR/nothing: there is no such file or folder.
        keys DIR --header DIR/data/K.h --qml DIR/data/K.qml       | 0
        .. | written DIR/data/K.h\nwritten DIR/data/K.qml\n |
        keys DIR --header DIR/data/known.json/K.h                 | 2    |                    | K.h: cannot be written:
        keys DIR                                                  | 2    |
        .. | --header or --qml is missing.
        keys DIR --header K.h --namespace 1a                      | 2    |
        .. | --namespace '1a' is no name of a namespace.
        keys DIR/faulty --header K.h                              | 2    |
        .. | the base language 'en_US', or POSIX, cannot be read.
        languages DIR                                             | 0    | de_DE\nen_US\n     |
        languages DIR/faulty --format json                        | 1
        .. | {"languages":[],"leftOut":[{"column":5,
        .. "fault":"malformed JSON: found '\"', expected ',' or '}'. The file is left out; correct it there.",
        .. "file":"DIR/faulty/fr_FR.json","line":3}]}\n | textmanager: DIR/faulty/fr_FR.json:3:5: malformed JSON: found
        languages DIR/twice                                       | 1    | de_DE\n
        .. | DIR/twice/de_DE.backup.json: replaced by de_DE.json, which has the same language key 'de_DE'.
        urls DIR                                                  | 0    | Menu\nMenu/Save\n  |
        urls DIR --language fr_FR --format json                   | 0
        .. | {"language":"en_US","urls":["Menu","Menu/Save"]}\n
        .. | language 'fr_FR' is not loaded, 'en_US' answers; loaded are: de_DE, en_US.
        urls DIR/short --language fr_FR                           | 1    |
        .. | 'fr_FR' is not loaded; loaded are: de_DE.
        header DIR --language de_DE                               | 0    | language: de\nsubLanguage: formal\n |
        header DIR --language de_DE --format json                 | 0    | {"language":"de","subLanguage":"formal"}\n |
        get DIR                                                   | 2    |                    | get: URL... is missing.
        get DIR Menu --short                                      | 2    |
        .. | --short needs --short-folder NAME.
        get DIR Menu --short --comment                            | 2    |                    | exclude each other
        get DIR Menu --short-folder no                            | 2    |
        .. | /no': there is no such folder.
        get DIR/de_DE.json Menu                                   | 2    |                    | it is no folder.
        get DIR Menu --language=                                  | 2    |
        .. | --language needs a key, such as de_DE.
        urls DIR --format xml                                     | 2    |
        .. | unknown format 'xml': it is one of text, json.
        urls DIR --lang de_DE                                     | 2    |
        .. | Unknown option 'lang'.\nSee 'textmanager urls --help'.
        all DIR Menu                                              | 0    | {"de_DE":"Menü","en_US":"Menu"}\n |
        all DIR Menu/Number                                       | 1    | {}\n
        .. | Menu/Number: no language has a text there.
        all DIR Mneu                                              | 1    | {}\n              | Did you mean Menu?
        pick --language de_DE < {"de_DE": "d", "POSIX": "p"}      | 0    | d\n               | de_DE answers.
        pick --language fr_FR < {"de_DE": "d", "POSIX": ""}       | 0    | \n
        .. | no text in fr_FR, POSIX answers.
        pick --format json < {"en_US": "e", "fr_FR": ""}          | 0
        .. | {"found":true,"language":"en_US","text":"e","valid":false}\n
        .. | fr_FR: empty or no text; it is left out.\ntextmanager: the object is not valid: it has no POSIX.
        pick < {"fr_FR": "f"}                                     | 1    |
        .. | nor in a fallback language; there are: fr_FR.
        pick < {\n"POSIX": "p",\n"ä日本" "e"}                     | 2    |
        .. | standard input:3:7: malformed JSON: found '"', expected ':' behind the key.
        pick                                                      | 2    |
        .. | standard input:1:1: malformed JSON: found the end of the text, expected '{'.
        pick < {"POSIX": {                                        | 2    |
        .. | standard input:1:12: malformed JSON: found the end of the text, expected a key in quotation marks.
        pick < {"POSIX": "p",\n "n": 1e400}                       | 2    |
        .. | standard input:2:7: malformed JSON: found a number out of range
        pick < DEEP                                               | 2    |
        .. | standard input:1:1025: malformed JSON: found more than 1024 levels.
        pick < []                                                 | 2    |
        .. | standard input:1:1: found an array. Expected is an object
        pick more                                                 | 2    |
        .. | pick: unexpected argument 'more'.
        translate DIR --language de_DE --keys i:t:s --short-folder short --format json < [{"i":"Menu"},{"i":"Menu/Save",
        .. "t":"x"},{"i":7}] | 0 | [{"i":"Menu","s":"M","t":"Menü"},{"i":"Menu/Save","t":"x"},{"i":7}]\n
        .. | JsonValue for 'TextId' does not contain a string!
        translate DIR --keys i:t --keys t:u --delete-text-url --format json < {"i":"Menu","t":"Menu/Save"} | 0
        .. | {"i":"Menu","t":"","u":"Save"}\n |
        translate DIR --data-type SystemInformationData --format json - < {"valueTextId":"Menu","labelTextId":"No"} | 1
        .. | {"labelText":"","labelTextId":"No","labelTextShort":"","valueText":"Menu","valueTextId":"Menu",
        .. "valueTextShort":"Menu"}\n
        .. | textmanager: unknown text ids, for which the empty text was written: 1\n
        .. textmanager: No: no text (en_US: not in its file,
        translate DIR --keys i:t --format json DIR/short/de_DE.json | 0 | {"Content":{"Menu":{"text":"M"}}}\n |
        translate DIR --keys i:t < 7                              | 2    |
        .. | standard input:1:1: malformed JSON: found a value alone, expected '{'. Expected is an object or an array.
        translate DIR --keys i:t --lines < {"i":"Menu"}\n\n{"i" 5}\n7\n{"i":"No"}\n[{"i":"No"}] | 1
        .. | {"i":"Menu","t":"Menu"}\n{"i":"No","t":""}\n[{"i":"No","t":""}]\n | standard input:3:6: malformed JSON
        translate DIR --keys i:t --lines < {"i":"Menu"}\n{"ä":1,"b":{"i":{},"i":1}} | 1 | {"i":"Menu","t":"Menu"}\n
        .. | standard input:2:20: the key b/i stands there twice. The line is left out.
        translate DIR --keys i:t --lines DIR                      | 2    |
        .. | textmanager: cannot read DIR: Is a directory.
        translate DIR - more                                      | 2    |
        .. | translate: unexpected argument 'more'.
        translate DIR --keys i                                    | 2    |
        .. | --keys i: expected TEXTID:TEXT or TEXTID:TEXT:SHORT.
        translate DIR --data-type SystemInformationDat            | 2    |
        .. | unknown data-type 'SystemInformationDat': it is one of
        translate DIR --keys i:t --data-type SystemInformationData | 2    |
        .. | either --data-type or --keys
        help gte                                                  | 2    |
        .. | there is no command 'gte'. Did you mean get?
        gte DIR Menu                                              | 2    |
        .. | there is no command 'gte'. Did you mean get?
    )");
}

void ToolLookUpsTest::answers()
{
    const LanguageFiles files;
    writeFolders(files);
    const QString tooDeepForQtAlone = QString(2000, '[') + QString(2000, ']');
    const QString input = cell("words").section(" < ", 1).replace("DEEP", tooDeepForQtAlone);
    const ToolRun run(files.words(cell("words").section(" < ", 0, 0)), input.toUtf8(),
                      files.path() + "elsewhere");
    QCOMPARE(run.output(), files.fill(cell("output")));
    QVERIFY2(run.says(files.fill(cell("message"))), qPrintable(run.messages()));
    QCOMPARE(QString::number(run.exitStatus()), cell("exit"));
}

void ToolLookUpsTest::fitsIntoAShell_data()
{
    addTable(R"(
        line                                                      | exit | output             | message
        script -qec "TOOL get DIR Red" /dev/null                  | 0    | \u001b[31m\u009b\r\n |
        script -qec "TOOL get DIR Red --format json" /dev/null    | 0
        .. | {"answers":[{"found":true,"language":"en_US","text":"\u001b[31m\u009b","url":"Red"}]}\r\n |
        TOOL get DIR Red >DIR/out; cat -v DIR/out                 | 0    | ^[[31mM-BM-^[\n    |
        TOOL get DIR Red >/dev/full                               | 2    |
        .. | cannot write the result: No space left on device
        TOOL set DIR en_US Red --text t >/dev/full                | 0    |
        .. | en_US.json: is saved, but what was changed could not be printed: No space
        TOOL get DIR "`printf 'R\377d'`"                          | 2    |
        .. | the argument 'R\xffd' is not encoded in UTF-8
    )");
}

void ToolLookUpsTest::fitsIntoAShell()
{
    const LanguageFiles files;
    files.write("en_US", R"({"Content": {"Red": {"text": "\u001b[31m\u009b", "comment": ""}}})");
    const QString line = files.fill(cell("line")).replace("TOOL", TEXTMANAGER_PROGRAM);
    const ToolRun run({"-c", line}, {}, {}, "sh");
    QCOMPARE(run.output(), cell("output"));
    QVERIFY2(run.says(cell("message")), qPrintable(run.messages()));
    QCOMPARE(QString::number(run.exitStatus()), cell("exit"));
}

void ToolLookUpsTest::translatesEachLineAtOnce()
{
    const LanguageFiles files;
    QProcess tool;
    tool.start(TEXTMANAGER_PROGRAM, {"translate", files.path(), "--keys", "i:t", "--lines"});
    tool.write("{}\n");
    QVERIFY(tool.waitForReadyRead());
    QCOMPARE(tool.readAll(), "{}\n");
    tool.closeWriteChannel();
    QVERIFY(tool.waitForFinished());
    QCOMPARE(tool.exitCode(), 0);
}

QTEST_GUILESS_MAIN(ToolLookUpsTest)
#include "tst_tool_look_ups.moc"
