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

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFolder(const LanguageFiles& files)
{
    files.write("de", R"({ "Header": {"language": "d"}, "Content": {"M": {"text": "ü",
        "comment": "c", "childs": {"comment": {"text": "x", "comment": "y"}}}, "H": {"text": "h"}}})");
    files.write("en_US", R"({"Content": {"M": {"text": "m", "comment": ""}, "E": {"text": "e"}}})");
    files.write("short/de", R"({"Content": {"M": {"text": "s", "comment": "c"}}})");
    files.write("faulty/de", R"({"Content": {"M": }})");
    QDir(files.path()).mkdir("links");
    QFile::link("../short/de.json", files.file("links/de"));
}

} // namespace

class ToolPackingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void packs_data();
    void packs();
    void packsTheSameTwice();
    void seesWhatIsAnsweredOtherwise_data();
    void seesWhatIsAnsweredOtherwise();
};

void ToolPackingTest::packs_data()
{
    addTable(R"(
        words                                           | exit | de                   | message
        pack DIR -o DIR/out                             | 0
        .. | {"Content":{"H":{"text":"h"},"M":{"childs":{"comment":{"comment":"y","text":"x"}},"comment":"c",
        .. "text":"ü"}},"Header":{"language":"d"}}\n |
        pack DIR -o DIR/a/out --blank-comments          | 0
        .. | {"Content":{"H":{"text":"h"},"M":{"childs":{"comment":{"comment":"","text":"x"}},"comment":"","text":"ü"}},
        .. "Header":{"language":"d"}}\n |
        pack DIR -o DIR/out --drop-comments --languages de | 0
        .. | {"Content":{"H":{"text":"h"},"M":{"childs":{"comment":{"text":"x"}},"text":"ü"}},"Header":{"language":"d"}}
        .. \n | de has 1 texts of languages that are not packed; they will be empty, or others.\n
        .. textmanager: without comments no URL is listed
        pack DIR -o DIR/a/b/out --dry-run               | 0 | | a dry run: nothing was written to
        pack DIR/faulty -o DIR/out                      | 2 | | de.json:1:19: malformed JSON
        pack DIR -o DIR/out --languages de,fr           | 2 | | there is no language 'fr'
        pack DIR/short -o DIR                           | 2 | | holds something already. Empty it, or give --force.
        pack DIR/short -o DIR --force                   | 2 | | en_US.json: is not of this pack
        pack DIR -o DIR/faulty/.. --force               | 2 | | de.json: is to be packed, and would be
        pack DIR -o DIR/short --languages de --force    | 2 | | short' is in the folder that is to be packed, and
        pack DIR/links -o DIR/short --force             | 2 | | short/de.json: is to be packed, and would be
        pack DIR -o DIR/de.json                         | 2 | | is no folder
        pack DIR                                        | 2 | | --output DIR is missing
        pack DIR -o DIR/out --blank-comments --drop-comments | 2 | | exclude each other
    )");
}

void ToolPackingTest::packs()
{
    const LanguageFiles files;
    writeFolder(files);
    const auto listAll = [&] {
        return QDir(files.path()).entryList(QDir::AllEntries | QDir::Hidden);
    };
    const QStringList before = listAll();
    const ToolRun run(files.words(cell("words")));
    QVERIFY2(run.says(cell("message")), qPrintable(run.messages()));
    QCOMPARE(QString::number(run.exitStatus()), cell("exit"));
    const QString name = cell("words").contains("/a/") ? "a/out/de" : "out/de";
    QCOMPARE(QString::fromUtf8(bytesOf(files.file(name))), cell("de"));
    QStringList after = listAll();
    if (!cell("de").isEmpty())
        after.removeOne(name.section('/', 0, 0));
    QCOMPARE(after, before);
}

void ToolPackingTest::packsTheSameTwice()
{
    const LanguageFiles files;
    writeFolder(files);
    const LanguageFiles out;
    const timespec newest = {2'000'000'000, 123'456'789};
    const timespec times[] = {newest, newest};
    QCOMPARE(utimensat(AT_FDCWD, qPrintable(files.file("short/de")), times, 0), 0);
    const QString words = "pack DIR --short-folder short --force -o ";
    for (int run = 0; run < 2; ++run) {
        QCOMPARE(ToolRun(files.words(words + out.path())).exitStatus(), 0);
        for (const QString name : {"de", "en_US", "short/de"}) {
            struct stat status = {};
            QCOMPARE(stat(qPrintable(out.file(name)), &status), 0);
            QCOMPARE(status.st_mtim.tv_sec, newest.tv_sec);
            QCOMPARE(status.st_mtim.tv_nsec, newest.tv_nsec);
        }
    }
}

void ToolPackingTest::seesWhatIsAnsweredOtherwise_data()
{
    addTable(R"(
        file     | content                                                      | difference
        de       | {"Header": {"language": "d"}, "Content": {"M": {"text": "ü", "comment": "c"}}}
        .. | the packed folder answers otherwise for H in de.
        de       | {"Header": {"language": "d"}, "Content": {"M": {"text": "u", "comment": "c"}, "H": {"text": "h"}}}
        .. | the packed folder answers otherwise for M in de.
        de       | {"Header": {"language": "d"}, "Content": {"M": {"text": "ü", "comment": ""}, "H": {"text": "h"}}}
        .. | the packed folder answers otherwise for M in de.
        de       | {"Header": {"language": "d"}, "Content": {"M": {"text": "ü"}, "H": {"text": "h"}}}
        .. | the packed folder lists other URLs in de.
        de       | {"Content": {"M": {"text": "ü", "comment": "c"}, "H": {"text": "h"}}}
        .. | the packed folder has another header in de.
        short/de | {"Content": {"M": {"text": "t"}}}
        .. | the packed folder answers otherwise for M in de.
        fr       | {"Content": {}}
        .. | the packed folder has other languages.
        de       | {"Header": {"language": "d"}, "Content": {"M": {"text": "ü", "comment": "c"}, "H": {"text": "h"}}} |
    )");
}

void ToolPackingTest::seesWhatIsAnsweredOtherwise()
{
    const LanguageFiles files;
    for (const QString name : {"de", "out/de"})
        files.write(name, R"({"Header": {"language": "d"}, "Content": {"M": {"text": "ü",
            "comment": "c"}, "H": {"text": "h"}}})");
    for (const QString name : {"short/de", "out/short/de"})
        files.write(name, R"({"Content": {"M": {"text": "s"}}})");
    files.write("out/" + cell("file"), cell("content").toUtf8());
    PackRequest request;
    request.folderPath = files.path();
    request.shortFolder = "short";
    const PackVerification verification(request, {"de"}, files.path() + "out");
    QCOMPARE(verification.findDifference("de"), cell("difference"));
}

QTEST_GUILESS_MAIN(ToolPackingTest)
#include "tst_tool_packing.moc"
