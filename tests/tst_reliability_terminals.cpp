#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

namespace
{

/** What names a window and more, in the escape sequences of seven bits and of eight. */
const QString evil = QString("\x1b]0;x\x07\r\b\x7f") + QChar(0x9b) + "2J";

/** A folder in which all that a stranger can name or write is evil. */
class EvilFolder : public LanguageFiles
{
public:
    EvilFolder()
    {
        const QByteArray file =
            R"({"Header": {"language": "EVIL", "subLanguage": "EVIL"}, "Content": {
            "EVIL": {"text": "EVIL", "comment": "EVIL", "childs": {"A": {"text": "EVIL", "comment": "c"}}},
            "B": {"text": "EVIL %1", "comment": 1}}})";
        for (const QString name : {"en_US", "de_DE", "EVIL"})
            write(filled(name), filled(file, true).toUtf8());
        write(filled("broken-EVIL"), filled("{EVIL").toUtf8());
        writeFile(".textmanager-check.json",
                  filled(R"({"EVIL": "EVIL", "base": "en_US"})", true).toUtf8());
        writeFile(filled("EVIL.tsv"),
                  filled("URL\ten_US\tde_DE\nEVIL\tEVIL\tEVIL\nC\tEVIL\tx\n").toUtf8());
        writeFile(filled("EVIL.po"), filled("msgid EVIL").toUtf8());
        writeFile(filled("EVIL.batch"), filled("{\"EVIL\": 1}\n").toUtf8());
        writeFile(filled("EVIL.cpp"), filled("getText(\"EVIL/EVIL\");").toUtf8());
        writeFile(filled("data-EVIL"),
                  filled(R"([{"labelTextId": "EVIL"}, {"labelTextId": "X-EVIL"}])", true).toUtf8());
    }

    /** The text with the evil one in its places, in the way that JSON has it if that is wanted. */
    static QString filled(const QString& text, bool isJson = false)
    {
        const QString inJson = "\\u001b]0;x\\u0007\\r\\b\\u007f\\u009b2J";
        return QString(text).replace("EVIL", isJson ? inJson : evil);
    }
};

/** What pick reads. */
QByteArray object()
{
    return EvilFolder::filled(R"({"POSIX": "EVIL", "de_DE": "EVIL", "EVIL": 1})", true).toUtf8();
}

/** What a command writes to a terminal on which it runs, and which it does not read from. */
QString outputOnTerminal(const LanguageFiles& folder, const QString& command)
{
    folder.writeFile("input", object());
    const QString words = folder.words(command).join("' '");
    const QString line =
        QString("'%1' '%2' <'%3input'").arg(TEXTMANAGER_PROGRAM, words, folder.path());
    const ToolRun run({"-qe", "-E", "never", "-c", line, "/dev/null"}, {}, {}, "script");
    if (run.exitStatus() < 0 || run.exitStatus() > 2)
        qFatal("the program did not run to its end on a terminal");
    return run.output();
}

} // namespace

class ReliabilityTerminalsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("TERM", "xterm"); }

    void showsNoControls_data()
    {
        addTable(R"(
        command
        EVIL
        get --EVIL
        get DIR EVIL
        get DIR EVIL --format json
        all DIR EVIL
        urls DIR
        header DIR --language EVIL
        languages DIR
        completions EVIL
        check DIR
        check DIR --format json
        check DIR --format sarif
        set DIR de_DE EVIL --text EVIL --dry-run
        set DIR de_DE --batch DIR/EVIL.batch
        set-header DIR broken-EVIL --language-name EVIL
        remove DIR de_DE EVIL/A --format json
        rename DIR EVIL NEW-EVIL --dry-run
        new DIR new-EVIL --dry-run
        mark DIR de_DE EVIL --current
        export DIR --language de_DE -o DIR/new-EVIL.tsv
        import DIR DIR/EVIL.tsv
        import DIR DIR/EVIL.po
        pseudo DIR -o pseudo-EVIL
        keys DIR --header DIR/EVIL.h
        usage DIR DIR/EVIL.cpp --unused
        pack DIR -o DIR/packed-EVIL --drop-comments
        pick --language de_DE
        watch DIR EVIL X-EVIL --once
        translate DIR DIR/data-EVIL --data-type SystemInformationData
        translate DIR DIR/broken-EVIL.json --data-type SystemInformationData
        )");
    }
    void showsNoControls()
    {
        const EvilFolder folder;
        const EvilFolder same;
        const QString command = EvilFolder::filled(cell("command"));
        QString shown = outputOnTerminal(folder, command);
        // Of the tool itself: colours, and the line of progress that is written anew.
        shown.remove(QRegularExpression("\x1b\\[[0-9;]*m|\r\x1b\\[K|\r(?=\n)"));
        QVERIFY2(!shown.isEmpty(), "nothing was shown");
        for (const QChar character : qAsConst(shown))
            QVERIFY2(character == '\n' || character == '\t' ||
                         character.category() != QChar::Other_Control,
                     qPrintable(shown));
        // Into a pipe, the same is exact; in JSON, it is in escapes there, too.
        const QString escaped = "\\u001b]0;x\\u0007";
        const ToolRun run(same.words(command), object());
        const QString piped = run.output() + run.messages();
        QCOMPARE(shown.contains(escaped), piped.contains(evil) || piped.contains(escaped));
        QVERIFY(piped.contains(evil) || command.contains("--format") || !shown.contains(escaped));
    }

    void staysInTheFolder_data()
    {
        addTable(R"(
        command                                           | message
        set DIR/l ../x/de_DE A --text z                   | is no language key
        set-header DIR/l ../x/de_DE --language-name z     | is no language key
        remove DIR/l ../x/de_DE A                         | is no language key
        mark DIR/l ../x/de_DE A --current                 | is no language key
        new DIR/l ../x/fr_FR                              | is no language key
        new DIR/l fr_FR --from ../x/de_DE                 | is no language key
        pseudo DIR/l -o ../x/qps                          | is no language key
        pseudo DIR/l -o DIR/x/qps                         | is no language key
        export DIR/l --language ../x/de_DE -o DIR/o.tsv   | there is no language
        import DIR/l DIR/x/out.tsv                        | there is no such language
        import DIR/l DIR/x/out.tsv --language ../x/de_DE  | there is no such language
        pack DIR/l -o DIR/p --languages ../x/de_DE        | there is no language
        check DIR/l --language ../x/de_DE                 | there is no file of the language
        check DIR/l --base ../x/de_DE                     | there is no file of the base language
        check DIR/l --short-folder ../x                   | is no folder below DIR
        import DIR/l DIR/x/in.tsv --short-folder ../x     | is no folder below DIR
        export DIR/l --language de_DE --short-folder .. -o DIR/o.po | is no folder below DIR
        rename DIR/l A B --short-folder DIR/x             | is no folder below DIR
        pack DIR/l -o DIR/p --short-folder a/../../x      | is no folder below DIR
        get DIR/l A --short --short-folder ../x           | is no folder below DIR
        import DIR/settings DIR/x/in.tsv                  | name the folder of the short texts
        )");
    }
    void staysInTheFolder()
    {
        const LanguageFiles folder;
        const QByteArray file =
            R"({"Header": {}, "Content": {"A": {"text": "a", "comment": "c"}}})";
        for (const QString name :
             {"l/en_US", "l/de_DE", "x/en_US", "x/de_DE", "settings/en_US", "settings/de_DE"})
            folder.write(name, file);
        folder.writeFile("settings/.textmanager-check.json", R"({"shortFolder": "../x"})");
        folder.writeFile("x/in.tsv", "URL\ten_US\tde_DE\tshort text\nA\ta\tb\tc\n");
        folder.writeFile("x/out.tsv", "URL\ten_US\t../x/de_DE\nA\ta\tb\n");
        const QStringList before = QDir(folder.path() + "x").entryList(QDir::Files);
        const ToolRun run(folder.words(cell("command")));
        QVERIFY2((run.output() + run.messages()).contains(cell("message")),
                 qPrintable(run.messages()));
        for (const QString name : {"en_US", "de_DE"})
            QCOMPARE(folder.read("x/" + name), file);
        QCOMPARE(QDir(folder.path() + "x").entryList(QDir::Files), before);
    }
};

QTEST_GUILESS_MAIN(ReliabilityTerminalsTest)
#include "tst_reliability_terminals.moc"
