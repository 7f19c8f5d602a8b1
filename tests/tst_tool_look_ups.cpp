#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"

#include <QDir>
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
    files.writeFile("data/a.cpp", "t.getText(\"Menu/\" + key, QString());");
    files.write("faulty/fr_FR", "{\r\n\"Content\":\r {} \"x\"}");
    for (const QString name : {"twice/de_DE", "twice/de_DE.backup"})
        files.write(name, R"({"Content": {}})");
    QDir(files.path()).mkdir("links");
    QFile::link("../short/de_DE.json", files.file("links/de_DE"));
}

/** A run of the words of a row, in which standard input follows "<". */
ToolRun runOf(const QString& line, const LanguageFiles& files)
{
    const QString tooDeepForQtAlone = QString(2000, '[') + QString(2000, ']');
    const QString input = line.section(" < ", 1).replace("DEEP", tooDeepForQtAlone);
    return ToolRun(files.words(line.section(" < ", 0, 0)), input.toUtf8(),
                   files.path() + "elsewhere");
}

} // namespace

class ToolLookUpsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data()
    {
        addTable(R"(
        words                           | exit | output         | message
        get DIR Menu Menu/Save --language de_DE | 0 | Menü\nSave\n
        .. | textmanager: Menu/Save: no text in de_DE, en_US answers.\n
        get DIR Menu --comment --language de_DE | 0    | Titel\n |
        get DIR Menu --short --short-folder short --language de_DE | 0    | M\n |
        get DIR Menu/Save --short --short-folder short --language de_DE | 0 | Save\n
        .. | no short text in de_DE, the full text of en_US answers
        get DIR Menu/Svae Menu | 1 | \nMenu\n
        .. | Menu/Svae: no text (en_US: not in its file, POSIX: not loaded). Did you mean Menu/Save?
        get DIR Menu --language de_de   | 0    | Menu\n         | language 'de_de' is not loaded. Did you mean de_DE?\n
        get DIR save --language de_DE   | 1    |                | Did you mean Menu/Save?
        get DIR Menu/Number             | 1    |                | en_US: empty or no string
        get DIR Nothing/like/this       | 1    |                | POSIX: not loaded).\n
        get DIR Menu --format json | 0 | {"answers":[{"found":true,"language":"en_US","text":"Menu","url":"Menu"}]}\n |
        get DIR No --short --short-folder short --format json | 1
        .. | {"answers":[{"found":false,"isShortText":false,"language":"","text":"","url":"No"}]}\n | No: no text
        usage DIR DIR/data | 0 | DIR/data/a.cpp:1:11: the URL begins with Menu/, the rest comes at run time.\n |
        usage DIR DIR/data/known.json --text-id-key own --unused | 1
        .. | DIR/data/known.json:1:35: unknown Menu/Svae: no language has it. Did you mean Menu/Save?\nunused Menu/Save
        .. \n |
        usage DIR DIR/data --unused --format json | 0
        .. | {"atRunTime":[{"column":11,"file":"DIR/data/a.cpp","line":1,"url":"Menu/"}],"unknown":[],"unused":[]}\n |
        keys DIR --header DIR/data/K.h --qml DIR/data/K.qml | 0    | written DIR/data/K.h\nwritten DIR/data/K.qml\n |
        languages DIR                   | 0    | de_DE\nen_US\n |
        languages DIR/faulty --format json | 1 | {"languages":[],"leftOut":[{"column":5,
        .. "fault":"malformed JSON: found '\"', expected ',' or '}'. The file is left out; correct it there.",
        .. "file":"DIR/faulty/fr_FR.json","line":3}]}\n | textmanager: DIR/faulty/fr_FR.json:3:5: malformed JSON: found
        languages DIR/twice | 1 | de_DE\n
        .. | DIR/twice/de_DE.backup.json: replaced by de_DE.json, which has the same language key 'de_DE'.
        urls DIR                        | 0    | Menu\nMenu/Save\n |
        urls DIR --language fr_FR --format json | 0 | {"language":"en_US","urls":["Menu","Menu/Save"]}\n
        .. | language 'fr_FR' is not loaded, 'en_US' answers; loaded are: de_DE, en_US.
        urls DIR/short --language fr_FR | 1    |                | 'fr_FR' is not loaded; loaded are: de_DE.
        header DIR --language de_DE     | 0    | language: de\nsubLanguage: formal\n |
        header DIR --language de_DE --format json | 0    | {"language":"de","subLanguage":"formal"}\n |
        all DIR Menu                    | 0    | {"de_DE":"Menü","en_US":"Menu"}\n |
        all DIR Menu/Number             | 1    | {}\n           | Menu/Number: no language has a text there.
        all DIR Mneu                    | 1    | {}\n           | Did you mean Menu?
        pick --language de_DE < {"de_DE": "d", "POSIX": "p"} | 0    | d\n            | de_DE answers.
        pick --language fr_FR < {"de_DE": "d", "POSIX": ""} | 0    | \n             | no text in fr_FR, POSIX answers.
        pick --format json < {"en_US": "e", "fr_FR": ""} | 0
        .. | {"found":true,"language":"en_US","text":"e","valid":false}\n
        .. | fr_FR: empty or no text; it is left out.\ntextmanager: the object is not valid: it has no POSIX.
        pick < {"fr_FR": "f"}           | 1    |                | nor in a fallback language; there are: fr_FR.
        translate DIR --language de_DE --keys i:t:s --short-folder short --format json < [{"i":"Menu"},{"i":"Menu/Save",
        .. "t":"x"},{"i":7}] | 0 | [{"i":"Menu","s":"M","t":"Menü"},{"i":"Menu/Save","t":"x"},{"i":7}]\n
        .. | JsonValue for 'TextId' does not contain a string!
        translate DIR --keys i:t --keys t:u --delete-text-url --format json < {"i":"Menu","t":"Menu/Save"} | 0
        .. | {"i":"Menu","t":"","u":"Save"}\n |
        translate DIR --data-type SystemInformationData --format json - < {"valueTextId":"Menu","labelTextId":"No"} | 1
        .. | {"labelText":"","labelTextId":"No","labelTextShort":"","valueText":"Menu","valueTextId":"Menu",
        .. "valueTextShort":"Menu"}\n | textmanager: unknown text ids, for which the empty text was written: 1\ntextmana
        .. ger: No: no text (en_US: not in its file,
        translate DIR --keys i:t --format json DIR/short/de_DE.json | 0    | {"Content":{"Menu":{"text":"M"}}}\n |
        translate DIR --keys i:t --lines < {"i":"Menu"}\n\n{"i" 5}\n7\n{"i":"No"}\n[{"i":"No"}] | 1
        .. | {"i":"Menu","t":"Menu"}\n{"i":"No","t":""}\n[{"i":"No","t":""}]\n | standard input:3:6: malformed JSON
        translate DIR --keys i:t --lines < {"i":"Menu"}\n{"ä":1,"b":{"i":{},"i":1}} | 1 | {"i":"Menu","t":"Menu"}\n
        .. | standard input:2:20: the key b/i stands there twice. The line is left out.
        )");
    }
    void answers()
    {
        const LanguageFiles files;
        writeFolders(files);
        compareWithRow(runOf(cell("words"), files), files);
    }

    void refuses_data()
    {
        addTable(R"(
        words                                           | message
        usage DIR DIR/nothing DIR/en_US                 | DIR/nothing: there is no such file or folder.
        keys DIR --header DIR/data/known.json/K.h       | K.h: cannot be written:
        keys DIR                                        | --header or --qml is missing.
        keys DIR --header K.h --namespace 1a            | --namespace '1a' is no name of a namespace.
        keys DIR/faulty --header K.h                    | the base language 'en_US', or POSIX, cannot be read.
        get DIR                                         | get: URL... is missing.
        get DIR Menu --short                            | --short needs --short-folder NAME.
        get DIR Menu --short --comment                  | exclude each other
        get DIR Menu --short-folder no                  | /no': there is no such folder.
        get DIR/de_DE.json Menu                         | it is no folder.
        get DIR Menu --language=                        | --language needs a key, such as de_DE.
        urls DIR --format xml                           | unknown format 'xml': it is one of text, json.
        urls DIR --lang de_DE                           | Unknown option 'lang'.\nSee 'textmanager urls --help'.
        pick < {\n"POSIX": "p",\n"ä日本" "e"} | standard input:3:7: malformed JSON: found
        pick                              | standard input:1:1: malformed JSON: found the end of the text, expected '{'.
        pick < DEEP                                     | standard input:1:1025: malformed JSON: found more than 1024
        pick more                                       | pick: unexpected argument 'more'.
        translate DIR --keys i:t --lines DIR            | textmanager: cannot read DIR: Is a directory.
        translate DIR --keys i                          | --keys i: expected TEXTID:TEXT or TEXTID:TEXT:SHORT.
        translate DIR --data-type SystemInformationDat  | unknown data-type 'SystemInformationDat': it is one of
        translate DIR --keys i:t --data-type SystemInformationData | either --data-type or --keys
        gte DIR Menu                                    | there is no command 'gte'. Did you mean get?
        check DIR --short-folder no                     | there is no such folder
        check DIR --base it | no file of the base language 'it'; name another one with --base. There are: de_DE, en_US.
        check DIR --html DIR/no/x.html                  | cannot write
        check DIR --language de                         | no file of the language 'de'.
        check DIR --ignore mising-text                  | there is no finding 'mising-text'. Did you mean missing-text?
        check DIR --fail-under nan                      | a share from 0 to 100
        check DIR --short-length 0                      | --short-length needs
        set DIR fr_FR Menu --text t                     | there is no language 'fr_FR': no file
        new DIR de_DE                                   | the language 'de_DE' is there already
        rename DIR Menu Menu/X                          | cannot be moved to Menu/X, which is the same or below it
        export DIR --language de_DE -o DIR/x.txt        | x.txt: the extension tells no format. Name it with
        export DIR --language de_DF -o DIR/x.xlf        | Did you mean de_DE?
        export DIR --language en_US -o DIR/x.xlf        | 'en_US' is the base, which is not translated
        export DIR --base it --language de_DE -o x.xlf  | there is no base language 'it' in DIR
        export DIR --language de_DE -o DIR/no/x.xlf     | cannot be written
        export DIR --language de_DE -o DIR/en_US.json --as po | en_US.json is a file of the folder
        export DIR --language de_DE -o - --as po        | cannot write to standard output
        export DIR --all-languages -o DIR/de_DE.json    | cannot be made a folder
        export DIR --all-languages --language de -o DIR | expected either --language or --all-languages
        export DIR --language de_DE                     | --output is missing
        pseudo DIR -o de_DE                             | de_DE.json: was not made by this command
        pseudo DIR -o POSIX                             | 'POSIX' answers where other languages have no text
        pseudo DIR -o xx --base it                      | there is no base language 'it'
        pack DIR/faulty -o DIR/out                      | fr_FR.json:3:5: malformed JSON
        pack DIR -o DIR/out --languages de_DE,fr        | there is no language 'fr'
        pack DIR -o DIR/de_DE.json --languages de_DE    | is no folder
        pack DIR                                        | pack: --output
        pack DIR/short -o DIR                           | holds something already. Empty it, or give --force.
        pack DIR/short -o DIR --force                   | en_US.json: is not of this pack
        pack DIR -o DIR/short/.. --languages de_DE --force | de_DE.json: is to be packed, and would be
        pack DIR -o DIR/short --languages de_DE --force | short' is in the folder that is to be packed, and
        pack DIR/links -o DIR/short --force             | short/de_DE.json: is to be packed, and would be
        pack DIR -o DIR/out --blank-comments --drop-comments | exclude each other
        )");
    }
    /** It prints no result, and leaves all as it was. */
    void refuses()
    {
        const LanguageFiles files;
        writeFolders(files);
        const QMap<QString, QByteArray> before = files.readAll();
        const ToolRun run = runOf(cell("words"), files);
        QVERIFY2(run.says(files.fill(cell("message"))), qPrintable(run.messages()));
        QCOMPARE(run.exitStatus(), 2);
        QCOMPARE(run.output(), QString());
        QCOMPARE(files.readAll(), before);
    }

    void fitsIntoAShell_data()
    {
        addTable(R"(
        line                                       | exit | message
        TOOL get DIR Menu >/dev/full               | 2    | cannot write the result: No space left on device
        TOOL set DIR en_US M --text t >/dev/full | 0 | en_US.json: is saved, but what was changed could not be printed
        TOOL get DIR "`printf 'R\377d'`"           | 2    | the argument 'R\xffd' is not encoded in UTF-8
        ulimit -f 4; TOOL set DIR en_US M --text "`printf %9000d 1`" | 2 | cannot be saved: File too large.
        )");
    }
    void fitsIntoAShell()
    {
        const LanguageFiles files;
        writeFolders(files);
        const QString line = files.fill(cell("line")).replace("TOOL", TEXTMANAGER_PROGRAM);
        compareWithRow(ToolRun({"-c", line}, {}, {}, "sh"), files);
    }

    void translatesEachLineAtOnce()
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
};

QTEST_GUILESS_MAIN(ToolLookUpsTest)
#include "tst_tool_look_ups.moc"
