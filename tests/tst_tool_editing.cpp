#include "LanguageFiles.h"
#include "SteppedToolRun.h"
#include "Table.h"
#include "ToolRun.h"

#include <QDateTime>
#include <QDir>
#include <QJsonDocument>
#include <QLockFile>
#include <QProcess>
#include <QTest>

#include <utility>

#include <sys/syscall.h>

namespace
{

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList namesIn(const LanguageFiles& files)
{
    return QDir(files.path()).entryList(QDir::Files | QDir::Hidden);
}

/** A file as the program stores it; "!" begins one that is taken as it is. */
QByteArray fileWith(const QByteArray& content)
{
    if (content.startsWith('!'))
        return content.mid(1);
    return QJsonDocument(parseObject("{\"Content\": " + content + "}")).toJson();
}

/** A file that is saved in more than one piece. */
QByteArray largeFile(const QByteArray& text)
{
    return fileWith("{\"A\": {\"text\": \"" + text + "\", \"comment\": \"" +
                    QByteArray(100000, 'x') + "\"}}");
}

QString lockOf(const LanguageFiles& files)
{
    return files.path() + ".de.json.lock";
}

} // namespace

class ToolEditingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void edits_data();
    void edits();
    void changesOneLineOfAnExample();
    void startsALanguage();
    void losesNothingOfTwoEditors();
    void noticesWhatOthersWriteMeanwhile();
    void renamesEverywhere();
    void savesWholeOrNotAtAll();
    void keepsTheFileWhenTheDiskIsFull();
};

void ToolEditingTest::edits_data()
{
    addTable(R"(
        content                                    | words                              | input | exit | after | message
        {"M": {"text": "a", "comment": "b"}}       | set DIR de M --text new            | | 0
        .. | {"M": {"text": "new", "comment": "b"}} |
        {"M": {"text": "a", "comment": "b"}}       | set DIR de M --comment=            | | 0
        .. | {"M": {"text": "a", "comment": ""}} |
        {}                                         | set DIR de M/S --text t            | | 0
        .. | {"M": {"childs": {"S": {"text": "t"}}}} | M/S: has no comment yet
        {"M": {"S": {"text": "a"}}}                | set DIR de M/N --text b --comment c | | 0
        .. | {"M": {"S": {"text": "a"}, "N": {"text": "b", "comment": "c"}}} |
        {"M": {"text": 1}}                         | set DIR de M --text t              | | 1 | same
        .. | textmanager: M: cannot be written: Content/M/text is a number there, 1, and no text.
        {"M": {"childs": ["x"]}}                   | set DIR de M/S --text t            | | 1 | same
        .. | Content/M/childs is an array there, ["x"], and no object
        {"M": {}}                                  | set DIR de M/childs/S --text t     | | 1 | same
        .. | its key begins with 'childs'
        {"L": {"childs": {"S": {}, "T": {}}}, "M": {"childs": {"S": {}}}, "N": {"childs": {"O": {}}, "text": ""}}
        .. | remove DIR de L/S M M/S N/O | | 0 | {"L": {"childs": {"T": {}}}, "N": {"text": ""}} |
        {"M": {"childs": {"S": {}}, "S": {}}}      | remove DIR de M/S                  | | 0
        .. | !{\n    "Content": {\n        "M": {\n            "S": {\n            },\n            "childs": {}
        .. \n        }\n    }\n}\n |
        {"M": {"text": "x"}, "Save": {"text": "", "comment": ""}} | remove DIR de M Sav M/text | | 1 | same
        .. | Sav: there is nothing to remove. Did you mean Save?\ntextmanager: M/text: there is
        {"M": {"text": "a", "comment": ""}}        | set DIR de --batch - | ﻿{"url": "M", "text": "\t"}\n\nN#b#ü\r\nM##c
        .. | 0 | {"M": {"text": "\t", "comment": "c"}, "N": {"text": "b", "comment": "ü"}} |
        {"M": {}}                                  | set DIR de --batch - | M#b\n\nM/#t                   | 1 | same
        .. | standard input:3: M/: cannot be written: it has an empty key
        {"M": {}}                                  | set DIR de --batch - | M#b\nM\nM#b#c#d               | 2 | same
        .. | standard input:2:1: found a URL alone; expected
        {"M": {}}                                  | set DIR de --batch - | M#"say ""b"", c"#""             | 0
        .. | {"M": {"text": "say \"b\", c"}} | M: has no comment yet
        {"M": {}}                                  | set DIR de --batch - | M#b\nM#"c\nd"#e               | 2 | same
        .. | standard input:2:1: the quotation marks of column 2 do not fit
        {"M": {}}                                  | set DIR de --batch - | {"url": "M", "text": "b", "text": "c"} | 2
        .. | same | standard input:1:27: "text" stands there twice
        {"M": {}}                                  | set DIR de --batch - | M#b\n{"url": "M" "text": "c"} | 2 | same
        .. | standard input:2:13: malformed JSON
        {"M": {}}                                  | set DIR de --batch - | {"url": "M", "text": 1}       | 2 | same
        .. | standard input:1:1: unexpected "text"; expected an object with
        {"M": {}}                                  | set DIR de --batch - | M#b\n?#c                      | 2 | same
        .. | standard input:2:1: is not encoded in UTF-8
        {"M": {"text": "a", "comment": ""}}        | set DIR de N/M --text b --comment= | | 0
        .. | {"M": {"text": "a", "comment": ""}, "N": {"childs": {"M": {"text": "b", "comment": ""}}}}
        .. | N/M: is new. Did you mean M?
        {"M": {"text": "a", "comment": ""}}        | set DIR de --batch - --must-exist  | M#b\nN#c | 1 | same
        .. | N: is not there, and --must-exist adds no URL
        {"M": {}}                                  | remove DIR de M --dry-run          | | 0 | same
        .. | a dry run: nothing was written to
        {"M": {}}                                  | new DIR it --dry-run               | | 0 | same
        .. | a dry run: nothing was written to
        {}                                         | set DIR fr M --text t              | | 2 | same
        .. | there is no language 'fr': no file
        {}                                         | set DIR ../de M --text t           | | 2 | same
        .. | '../de' is no language key
        {}                                         | new DIR de                         | | 2 | same
        .. | the language 'de' is there already
        !{"Content": {"M": {"text": "a" "comment"}}} | set DIR de M --text t           | | 2 | same
        .. | de.json:1:32: malformed JSON
        !{"Content": {"M": {"text": "a\nb"}}}      | set DIR de M --text t              | | 2 | same
        .. | de.json:1:30: malformed JSON
        !{"content": {}}                           | set DIR de M --text t              | | 2 | same
        .. | de.json:1:1: no language file: expected an object with "Content", found an object with the keys (content)
        ![{"Content": {}}]                         | new DIR it --from de               | | 2 | same
        .. | de.json:1:1: no language file: expected an object with "Content", found an array
        !{"Content": {"M": {"text": "a", "text": ""}}} | remove DIR de M                | | 2 | same
        .. | de.json:1:33: the key "text" stands there twice
    )");
}

void ToolEditingTest::edits()
{
    const LanguageFiles files;
    files.write("de", fileWith(cell("content").toUtf8()));
    QByteArray input = cell("input").toUtf8().replace('#', '\t');
    const ToolRun run(files.words(cell("words")), input.replace('?', '\xff'));
    QCOMPARE(bytesOf(files.file("de")),
             fileWith(cell(cell("after") == "same" ? "content" : "after").toUtf8()));
    QVERIFY2(run.says(cell("message")), qPrintable(run.messages()));
    QCOMPARE(run.exitStatus(), cell("exit").toInt());
    QCOMPARE(namesIn(files), QStringList("de.json"));
}

void ToolEditingTest::changesOneLineOfAnExample()
{
    const LanguageFiles files;
    const QString link = files.file("link");
    QFile::link("sub/real.json", link);
    const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    for (const QByteArray lineEnd : {"\n", "\r\n"}) {
        QByteArray bytes = bytesOf(EXAMPLE_LANGUAGES "ja_JP.json");
        files.write("sub/real", bytes.replace("\n", lineEnd));
        QVERIFY(QFile::setPermissions(files.file("sub/real"), permissions));

        const QStringList words = files.words(R"(set DIR link Alarms/Acknowledge --text 新"x")");
        QCOMPARE(ToolRun(words).output(), "changed Alarms/Acknowledge\n");
        QCOMPARE(ToolRun(words).output(), "unchanged Alarms/Acknowledge\n");
        QCOMPARE(bytesOf(link), bytes.replace(R"("確認")", R"("新\"x\"")"));
        QCOMPARE(QFileInfo(link).symLinkTarget(), files.file("sub/real"));
        QCOMPARE(QFile::permissions(link) & 0x7077, permissions & 0x7077);
    }
}

void ToolEditingTest::startsALanguage()
{
    const LanguageFiles files;
    files.write("de", R"({"Header": {"language": "de", "subLanguage": "AT"}, "Content": {
        "M": {"text": "a", "comment": "b", "childs": {"text": {"text": "c", "comment": "d"}}}}})");
    const ToolRun run(files.words("new DIR it --from de --format json"));
    QVERIFY(run.output().startsWith("{\"changes\":[{\"change\":\"added\",\"name\":\"M\"},"));
    const ToolRun header(files.words("set-header DIR it --language-name it --sub-language CH"));
    QCOMPARE(header.output(), "unchanged language\nchanged subLanguage\n");
    QCOMPARE(parseObject(bytesOf(files.file("it"))), parseObject(R"({
        "Header": {"language": "it", "subLanguage": "CH"}, "Content": {
        "M": {"text": "", "comment": "b", "childs": {"text": {"text": "", "comment": "d"}}}}})"));
}

void ToolEditingTest::losesNothingOfTwoEditors()
{
    const LanguageFiles files;
    files.write("de", fileWith("{}"));
    QProcess editors[8];
    for (QProcess& editor : editors) {
        const QString words = QString("set DIR de N%1 --text t").arg(&editor - editors);
        editor.start(TEXTMANAGER_PROGRAM, files.words(words));
    }
    for (QProcess& editor : editors)
        QVERIFY(editor.waitForFinished() && editor.exitCode() == 0);
    const QByteArray bytes = bytesOf(files.file("de"));
    QCOMPARE(parseObject(bytes)["Content"].toObject().size(), 8);

    QFile::link("de.json", files.file("link")); // another name does not get round the lock
    QLockFile lock(lockOf(files));
    QVERIFY(lock.lock());
    const ToolRun run(files.words("set DIR link M --text t"));
    const QString holder = "is being edited by 'tst_tool_editing', process %1 on";
    QVERIFY2(run.says(holder.arg(QCoreApplication::applicationPid())), qPrintable(run.messages()));
    QCOMPARE(run.exitStatus(), 2);
    QCOMPARE(bytesOf(files.file("de")), bytes);
}

void ToolEditingTest::noticesWhatOthersWriteMeanwhile()
{
    SKIP_IN_EMULATOR;
    const LanguageFiles files;
    files.write("de", fileWith("{}"));
    for (const QString words : {"set DIR de M --text t", "new DIR it"}) {
        const QString language = words.section(' ', 2, 2);
        bool isWritten = false; // once: the folder is synced, too
        runStepped(files.words(words), [&](long call) {
            if (call == SYS_fsync && !std::exchange(isWritten, true))
                files.write(language, "others");
            return true;
        });
        QCOMPARE(bytesOf(files.file(language)), "others");
    }
}

void ToolEditingTest::renamesEverywhere()
{
    const QByteArray before = R"({"M": {"childs": {"S": {"text": "a", "childs": {"T": {}}}}}})";
    const QByteArray after = R"({"M": {"childs": {"N": {"text": "a", "childs": {"T": {}}}}}})";
    const LanguageFiles files;
    files.write("de", fileWith(before));
    files.write("en", fileWith(after)); // as a crash between the two would leave it
    files.write("fr", fileWith("{}"));
    files.write("short/de", fileWith(before));
    const QString command = "rename DIR M/S M/N --short-folder short";
    QCOMPARE(ToolRun(files.words(command + " --dry-run")).exitStatus(), 0);
    QCOMPARE(bytesOf(files.file("de")), fileWith(before));
    QCOMPARE(ToolRun(files.words(command)).exitStatus(), 0);
    for (const QString name : {"de", "en", "short/de"})
        QCOMPARE(parseObject(bytesOf(files.file(name))), parseObject(fileWith(after)));
    const ToolRun miss(files.words("rename DIR M/S M/X"));
    QCOMPARE(miss.exitStatus(), 1);
    QVERIFY2(miss.says("M/S: no language has it"), qPrintable(miss.messages()));
    files.write("fr", fileWith(R"({"M": {"childs": {"N": {}, "X": {}}}})"));
    QCOMPARE(ToolRun(files.words("rename DIR M/N M/X")).exitStatus(), 2);
    QCOMPARE(parseObject(bytesOf(files.file("de"))), parseObject(fileWith(after)));
    QCOMPARE(ToolRun(files.words("rename DIR M M/X")).exitStatus(), 2);
}

void ToolEditingTest::savesWholeOrNotAtAll()
{
    SKIP_IN_EMULATOR;
    const LanguageFiles files;
    int oldFiles = 0;
    int newFiles = 0;
    // Killed before the first system call that it makes under its lock, the second, and so on.
    while (newFiles < 3) {
        files.write("de", largeFile("old"));
        QFile::remove(lockOf(files));
        int calls = 0;
        runStepped(files.words("set DIR de A --text new"), [&](long call) {
            calls += calls > 0 || call == SYS_flock ? 1 : 0;
            return calls <= oldFiles + newFiles;
        });
        const QByteArray bytes = bytesOf(files.file("de"));
        QVERIFY(bytes == largeFile("old") || bytes == largeFile("new"));
        ++(bytes == largeFile("old") ? oldFiles : newFiles);
        QCOMPARE(QDir(files.path()).entryList({"*json"}, QDir::Files), QStringList("de.json"));
    }
    QVERIFY(oldFiles > 5);

    // The locks of the dead keep nobody out, whether they died under them or while taking them.
    QFile lock(lockOf(files));
    QVERIFY(lock.exists());
    QCOMPARE(ToolRun(files.words("set DIR de A --text last")).output(), "changed A\n");
    QVERIFY(lock.open(QIODevice::WriteOnly));
    const QDateTime longAgo = QDateTime::currentDateTime().addSecs(-10);
    QVERIFY(lock.setFileTime(longAgo, QFileDevice::FileModificationTime));
    QCOMPARE(ToolRun(files.words("set DIR de A --text new")).output(), "changed A\n");
}

void ToolEditingTest::keepsTheFileWhenTheDiskIsFull()
{
    const LanguageFiles files;
    files.write("de", largeFile("old"));
    const QStringList limited = {"-c", "ulimit -f 8; exec \"$@\"", "sh", TEXTMANAGER_PROGRAM};
    const ToolRun run(limited + files.words("set DIR de A --text new"), {}, {}, "sh");
    QCOMPARE(run.exitStatus(), 2);
    QVERIFY(run.says("cannot be saved: File too large. The file is as it was."));
    QCOMPARE(bytesOf(files.file("de")), largeFile("old"));
    QCOMPARE(namesIn(files), QStringList("de.json"));
}

QTEST_GUILESS_MAIN(ToolEditingTest)
#include "tst_tool_editing.moc"
