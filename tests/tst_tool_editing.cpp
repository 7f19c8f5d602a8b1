#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QLockFile>
#include <QTest>

namespace
{

/** A file as the program stores it; "!" begins one that is taken as it is. */
QByteArray fileWith(const QString& content)
{
    if (content.startsWith('!'))
        return content.mid(1).toUtf8();
    return QJsonDocument(parseObject("{\"Content\": " + content.toUtf8() + "}")).toJson();
}

/** Runs the words of the row on its content of de; "<" begins what they read, "?" is no UTF-8. */
ToolRun runOnContent(const LanguageFiles& files)
{
    files.write("de", fileWith(cell("content")));
    const QString words = cell("words");
    const QByteArray input = words.section(" < ", 1).toUtf8().replace('?', '\xff');
    return ToolRun(files.words(words.section(" < ", 0, 0)), input);
}

} // namespace

class ToolEditingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void edits_data()
    {
        addTable(R"(
        content | words | after | message
        {"M": {"text": "a", "comment": "b"}} | set DIR de M --text new | {"M": {"text": "new", "comment": "b"}} |
        {"M": {"text": "a", "comment": "b"}} | set DIR de M --comment= | {"M": {"text": "a", "comment": ""}} |
        {}      | set DIR de M/S --text t | {"M": {"childs": {"S": {"text": "t"}}}} | M/S: has no comment yet
        {"M": {"S": {"text": "a"}}} | set DIR de M/N --text b --comment c
        .. | {"M": {"S": {"text": "a"}, "N": {"text": "b", "comment": "c"}}} |
        {"M": {"text": "a", "comment": ""}} | set DIR de N/M --text b --comment=
        .. | {"M": {"text": "a", "comment": ""}, "N": {"childs": {"M": {"text": "b", "comment": ""}}}}
        .. | N/M: is new. Did you mean M?
        {"L": {"childs": {"S": {}, "T": {}}}, "M": {"childs": {"S": {}}}, "N": {"childs": {"O": {}}, "text": ""}}
        .. | remove DIR de L/S M M/S N/O | {"L": {"childs": {"T": {}}}, "N": {"text": ""}} |
        {"M": {"childs": {"S": {}}, "S": {}}} | remove DIR de M/S
        .. | !{\n    "Content": {\n        "M": {\n            "S": {\n            },
        .. \n            "childs": {}\n        }\n    }\n}\n |
        {"M": {"text": "a", "comment": ""}} | set DIR de --batch - < ﻿{"url": "M", "text": "\t"}\n\nN→b→ü\r\nM→→c
        .. | {"M": {"text": "\t", "comment": "c"}, "N": {"text": "b", "comment": "ü"}} |
        {} | set DIR de --batch - < M→"say ""b"", c"→"" | {"M": {"text": "say \u0022b\u0022, c"}} | M: has no comment
        )");
    }
    void edits()
    {
        const LanguageFiles files;
        const ToolRun run = runOnContent(files);
        QCOMPARE(files.read("de"), fileWith(cell("after")));
        QVERIFY2(run.says(cell("message")), qPrintable(run.messages()));
        QCOMPARE(run.exitStatus(), 0);
        QCOMPARE(files.readAll().size(), 1);
    }

    void leavesAlone_data()
    {
        addTable(R"(
        content         | words                             | exit | message
        {"M": {"text": 1}} | set DIR de M --text t | 1
        .. | textmanager: M: cannot be written: Content/M/text is a number there, 1, and no text.
        {"M": {"childs": ["x"]}} | set DIR de M/S --text t  | 1    | Content/M/childs is an array there, ["x"], and no
        {"M": {}}       | set DIR de M/childs/S --text t    | 1    | its key begins with 'childs'
        {"M": {"text": "x"}, "Save": {"text": "", "comment": ""}} | remove DIR de M Sav M/text | 1
        .. | Sav: there is nothing to remove. Did you mean Save?\ntextmanager: M/text: there is
        {} | set DIR de --batch - < M→b\n\nM/→t             | 1    | standard input:3: M/: cannot be written: it has an
        {} | set DIR de --batch - < M→b\nM\nM→b→c→d         | 2    | standard input:2:1: found a URL alone; expected
        {} | set DIR de --batch - < M→b\nM→"c\nd"→e         | 2    | standard input:2:1: the quotation marks of column 2
        {} | set DIR de --batch - < {"url": "M", "text": "b", "text": "c"} | 2 | standard input:1:27: "text" stands
        {} | set DIR de --batch - < M→b\n{"url": "M" "text": "c"} | 2 | standard input:2:13: malformed JSON
        {} | set DIR de --batch - < {"url": "M", "text": 1} | 2    | standard input:1:1: unexpected "text"; expected an
        {} | set DIR de --batch - < M→b\n?→c                | 2    | standard input:2:1: is not encoded in UTF-8
        {"M": {}} | set DIR de --batch - --must-exist < M→b\nN→c | 1 | N: is not there, and --must-exist adds no URL
        {"M": {}}       | remove DIR de M --dry-run         | 0    | a dry run: nothing was written to
        {"M": {}}       | new DIR it --dry-run              | 0    | a dry run: nothing was written to
        {"S": {}}       | rename DIR S X --dry-run          | 0    | a dry run: nothing was written.
        {}              | rename DIR S X                    | 1    | S: no language has it
        {"S": {}, "X": {}} | rename DIR S X                 | 2    | X is there already, beside S.
        !{"Content": {"M": {"text": "a" "comment"}}} | set DIR de M --text t | 2 | de.json:1:32: malformed JSON
        !{"content": {}} | set DIR de M --text t | 2
        .. | de.json:1:1: no language file: expected an object with "Content", found an object with the keys (content)
        ![{"Content": {}}] | new DIR it --from de | 2
        .. | de.json:1:1: no language file: expected an object with "Content", found an array
        !{"Content": {"M": {"text": "a", "text": ""}}} | remove DIR de M | 2 | de.json:1:33: the key "text" stands there
        )");
    }
    void leavesAlone()
    {
        const LanguageFiles files;
        compareWithRow(runOnContent(files), files);
        QCOMPARE(files.read("de"), fileWith(cell("content")));
        QCOMPARE(files.readAll().size(), 1);
    }

    void changesOneLineOfAnExample()
    {
        const LanguageFiles files;
        const QString link = files.file("link");
        QFile::link("sub/real.json", link);
        const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
        const QStringList words = files.words("set DIR link Alarms/Acknowledge --text 新\"x\"");
        for (const QByteArray lineEnd : {"\n", "\r\n"}) {
            QByteArray bytes = LanguageFiles::readPath(EXAMPLE_LANGUAGES "ja_JP.json");
            files.write("sub/real", bytes.replace("\n", lineEnd));
            QVERIFY(QFile::setPermissions(files.file("sub/real"), permissions));
            QCOMPARE(ToolRun(words).output(), "changed Alarms/Acknowledge\n");
            QCOMPARE(ToolRun(words).output(), "unchanged Alarms/Acknowledge\n");
            QCOMPARE(files.read("link"), bytes.replace("\"確認\"", "\"新\\\"x\\\"\""));
            QCOMPARE(QFileInfo(link).symLinkTarget(), files.file("sub/real"));
            QCOMPARE(QFile::permissions(link) & 0x7077, permissions & 0x7077);
        }
    }

    void startsALanguage()
    {
        const LanguageFiles files;
        files.write("de", R"({"Header": {"language": "de", "subLanguage": "AT"}, "Content": {
            "M": {"text": "a", "comment": "b", "childs": {"text": {"text": "c", "comment": "d"}}}}})");
        const ToolRun run(files.words("new DIR it --from de --format json"));
        QVERIFY(run.output().startsWith("{\"changes\":[{\"change\":\"added\",\"name\":\"M\"},"));
        const ToolRun header(files.words("set-header DIR it --language-name it --sub-language CH"));
        QCOMPARE(header.output(), "unchanged language\nchanged subLanguage\n");
        QCOMPARE(parseObject(files.read("it")), parseObject(R"({
            "Header": {"language": "it", "subLanguage": "CH"}, "Content": {
            "M": {"text": "", "comment": "b", "childs": {"text": {"text": "", "comment": "d"}}}}})"));
    }

    void waitsForItsTurn()
    {
        const LanguageFiles files;
        const QByteArray bytes = fileWith("{}");
        files.write("de", bytes);
        QFile::link("de.json", files.file("link")); // another name does not get round the lock
        const QString lockPath = files.path() + ".de.json.lock";
        QLockFile lock(lockPath);
        QVERIFY(lock.lock());
        const ToolRun run(files.words("set DIR link M --text t"));
        const QString holder = "is being edited by 'tst_tool_editing', process %1 on";
        QVERIFY2(run.says(holder.arg(QCoreApplication::applicationPid())),
                 qPrintable(run.messages()));
        QCOMPARE(run.exitStatus(), 2);
        QCOMPARE(files.read("de"), bytes);

        lock.unlock();
        QFile left(lockPath); // by one that died while it took the lock
        QVERIFY(left.open(QIODevice::WriteOnly));
        const QDateTime longAgo = QDateTime::currentDateTime().addSecs(-10);
        QVERIFY(left.setFileTime(longAgo, QFileDevice::FileModificationTime));
        QCOMPARE(ToolRun(files.words("set DIR link M --text t")).output(), "added M\n");
    }

    void renamesEverywhere()
    {
        const QString before = R"({"M": {"childs": {"S": {"text": "a", "childs": {"T": {}}}}}})";
        const QString after = R"({"M": {"childs": {"N": {"text": "a", "childs": {"T": {}}}}}})";
        const LanguageFiles files;
        files.write("de", fileWith(before));
        files.write("en", fileWith(after)); // as a crash between the two would leave it
        files.write("fr", fileWith("{}"));
        files.write("short/de", fileWith(before));
        const ToolRun run(files.words("rename DIR M/S M/N --short-folder short"));
        QCOMPARE(run.exitStatus(), 0);
        for (const QString name : {"de", "en", "short/de"})
            QCOMPARE(parseObject(files.read(name)), parseObject(fileWith(after)));
        files.write("fr", fileWith(R"({"M": {"childs": {"N": {}, "X": {}}}})"));
        QCOMPARE(ToolRun(files.words("rename DIR M/N M/X")).exitStatus(), 2);
        QCOMPARE(parseObject(files.read("de")), parseObject(fileWith(after)));
    }
};

QTEST_GUILESS_MAIN(ToolEditingTest)
#include "tst_tool_editing.moc"
