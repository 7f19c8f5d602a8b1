#include "LanguageFiles.h"
#include "PackVerification.h"
#include "Table.h"
#include "ToolRun.h"

#include <QDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>

namespace
{

void writeFolder(const LanguageFiles& files)
{
    files.write("de", R"({ "Header": {"language": "d"}, "Content": {"M": {"text": "ü",
        "comment": "c", "childs": {"comment": {"text": "x", "comment": "y"}}}, "H": {"text": "h"}}})");
    files.write("en_US", R"({"Content": {"M": {"text": "m", "comment": ""}, "E": {"text": "e"}}})");
    files.write("short/de", R"({"Content": {"M": {"text": "s", "comment": "c"}}})");
}

} // namespace

class ToolPackingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void packs_data()
    {
        addTable(R"(
        words                           | de
        pack DIR -o DIR/out | {"Content":{"H":{"text":"h"},"M":{"childs":{"comment":{"comment":"y","text":"x"}},
        .. "comment":"c","text":"ü"}},"Header":{"language":"d"}}\n
        pack DIR -o DIR/a/out --blank-comments | {"Content":{"H":{"text":"h"},"M":{"childs":{"comment":{"comment":"",
        .. "text":"x"}},"comment":"","text":"ü"}},"Header":{"language":"d"}}\n
        pack DIR -o DIR/out --drop-comments --languages de | {"Content":{"H":{"text":"h"},"M":{"childs":{"comment":{
        .. "text":"x"}},"text":"ü"}},"Header":{"language":"d"}}\n
        pack DIR -o DIR/a/b/out --dry-run |
        )");
    }
    void packs()
    {
        const LanguageFiles files;
        writeFolder(files);
        const QStringList before = QDir(files.path()).entryList();
        const ToolRun run(files.words(cell("words")));
        QVERIFY2(run.exitStatus() == 0, qPrintable(run.messages()));
        QCOMPARE(run.says("de has 1 texts of languages that are not packed; they will be empty"),
                 cell("words").contains("--languages"));
        QCOMPARE(run.says("without comments no URL is listed"), cell("words").contains("drop"));
        const QString name = cell("words").contains("/a/out") ? "a/out/de" : "out/de";
        QCOMPARE(QString::fromUtf8(files.read(name)), cell("de"));
        if (cell("de").isEmpty())
            QCOMPARE(QDir(files.path()).entryList(), before);
    }

    void packsTheSameTwice()
    {
        const LanguageFiles files;
        writeFolder(files);
        const timespec newest = {2'000'000'000, 123'456'789};
        const timespec times[] = {newest, newest};
        QCOMPARE(utimensat(AT_FDCWD, qPrintable(files.file("short/de")), times, 0), 0);
        const LanguageFiles out;
        const QStringList words =
            files.words("pack DIR --short-folder short --force -o " + out.path());
        for (int run = 0; run < 2; ++run) {
            QCOMPARE(ToolRun(words).exitStatus(), 0);
            for (const QString name : {"de", "en_US", "short/de"}) {
                struct stat status = {};
                QCOMPARE(stat(qPrintable(out.file(name)), &status), 0);
                QCOMPARE(status.st_mtim.tv_sec, newest.tv_sec);
                QCOMPARE(status.st_mtim.tv_nsec, newest.tv_nsec);
            }
        }
    }

    void seesWhatIsAnsweredOtherwise_data()
    {
        // What is packed wrongly, and how.
        addTable(R"(
        file     | from                 | to                 | difference
        de       | , "H": {"text": "h"} |                    | answers otherwise for H in de.
        de       | "ü"                  | "u"                | answers otherwise for M in de.
        de       | "comment": "c"       | "comment": ""      | answers otherwise for M in de.
        de       | , "comment": "c"     |                    | lists other URLs in de.
        de       | "language": "d"      | "language": "e"    | has another header in de.
        short/de | "s"                  | "t"                | answers otherwise for M in de.
        fr       |                      |                    | has other languages.
        de       |                      |                    |
        )");
    }
    void seesWhatIsAnsweredOtherwise()
    {
        const LanguageFiles files;
        for (const QString folder : {"", "out/"}) {
            files.write(folder + "de", R"({"Header": {"language": "d"},
                "Content": {"M": {"text": "ü", "comment": "c"}, "H": {"text": "h"}}})");
            files.write(folder + "short/de", R"({"Content": {"M": {"text": "s"}}})");
        }
        QString wrong = files.read(cell("file"));
        wrong.replace(cell("from").isEmpty() ? "\n" : cell("from"), cell("to"));
        files.write("out/" + cell("file"),
                    cell("file") == "fr" ? R"({"Content": {}})" : wrong.toUtf8());
        PackRequest request;
        request.folderPath = files.path();
        request.shortFolder = "short";
        const PackVerification verification(request, {"de"}, files.path() + "out");
        const QString difference = cell("difference");
        QCOMPARE(verification.findDifference("de"),
                 difference.isEmpty() ? QString() : "the packed folder " + difference);
    }
};

QTEST_GUILESS_MAIN(ToolPackingTest)
#include "tst_tool_packing.moc"
