#include "CheckList.h"
#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"

#include <QJsonArray>
#include <QTest>

namespace
{

/** Two texts that are the same, one with a value, and what only POSIX has; and a short text. */
void writeBase(const LanguageFiles& files)
{
    files.write("en_US", R"({"Content": {
        "A": {"text": "%1 l", "comment": "At most 6 characters."},
        "B": {"text": "Two", "comment": "c", "childs": {"C": {"text": "Two", "comment": "c"}}}}})");
    files.write("POSIX", R"({"Content": {"A": {"text": "%1 l", "comment": "c"},
        "B": {"text": "Two", "comment": "c", "childs": {"C": {"text": "Two", "comment": "c"}}},
        "P": {"text": "P %1", "comment": "c"}}})");
    files.write("short/en_US",
                R"({"Content": {"B": {"text": "Tw", "comment": "At most 2 characters"}}})");
}

/** "line:column id url" of each finding but for those of files that nobody asks about. */
QString findingsOf(const ToolRun& run, const QString& file = QString())
{
    QStringList found;
    const QJsonArray findings = parseObject(run.output().toUtf8()).value("findings").toArray();
    for (const QJsonValue& finding : findings) {
        if (file.isEmpty() || finding["file"] == file)
            found += QString("%1:%2 %3 %4")
                         .arg(finding["line"].toInt())
                         .arg(finding["column"].toInt())
                         .arg(finding["id"].toString(), finding["url"].toString())
                         .trimmed();
    }
    return found.join(", ");
}

} // namespace

class ToolChecksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsInFiles_data()
    {
        // GOOD stands for all the texts of the base.
        addTable(R"(
        file     | content                                             | findings
        de_DE    | {"Content": {GOOD}}                                 |
        de_DE    | {"Content": {"A": {"text": "%1 l"}, "B": {"text": "Zwei"}}} | 0:0 missing-text B/C
        de_DE    | {"Content": {"A": {"text": ""}, "B": {"text": "Zwei", "C": {"text": "Zwei"}}}} | 1:28 empty-text A
        de_DE    | {"Content": {GOOD, "P": {"text": "P"}}}             | 1:109 placeholders-differ P
        de_DE    | {"Content": {GOOD, "AA": {"text": "x"}}}            | 1:110 unknown-url AA
        de_DE    | {"Content": {GOOD, "x/y": {}, "": {}, "childsX": {}}}
        .. | 1:95 unreachable-key x/y, 1:106 unreachable-key, 1:114 unreachable-key childsX
        de_DE    | {"Content": {"A": {"text": "%1 l"}, "B": {"text": "Z", "X": {}, "childs": {"C": {"text": "Z"}}}}}
        .. | 1:56 unreachable-key B/X
        de_DE    | {"Content": {"A": {"text": "%1 Liter"}, "B": {"text": "Zwei", "childs": {"C": {"text": "Two"}}}}}
        .. | 1:28 too-long A, 1:88 inconsistent-text B/C
        de_DE    | {"Content": {"A": {"text": "ä\u000A\u0041😀 x "}, "B": {"text": "Zwei", "childs": {"C": {"text": "Zwei
        .. "}}}}} | 1:28 line-breaks-differ A, 1:28 placeholders-differ A, 1:28 too-long A, 1:45 edge-space A
        en_US    | {"Content": {"A": {"text": "%1"}, "B": {"text": "y", "comment": ""}}}
        .. | 1:28 missing-comment A, 1:49 missing-comment B
        en_US    | {"Content": {"A": {"text": "<b>x", "comment": "c"}}} | 1:28 markup-differs A
        en_US    | {"Content": {"A": {"text": "", "comment": "c"}}}    | 1:28 empty-text A
        en_US    | {"Content": }                                       | 1:13 malformed-json
        short/de_DE | {"Content": {"B": {"text": "Zw"}}}                |
        short/de_DE | {"Content": {}}                                  | 0:0 missing-text B
        short/de_DE | {"Content": {"B": {"text": "Zwe"}}}              | 1:28 short-text-too-long B
        short/de_DE | {"Content": {"A": {"text": "%1"}, "B": {"text": ""}, "Q": {"text": "x"}}}
        .. | 1:49 empty-text B, 1:68 unknown-url Q
        )");
    }
    void findsInFiles()
    {
        const LanguageFiles files;
        writeBase(files);
        const QString good =
            R"("A": {"text": "%1 l"}, "B": {"text": "Zwei", "childs": {"C": {"text": "Zwei"}}})";
        files.write("de_DE", QByteArray(R"({"Content": {GOOD}})").replace("GOOD", good.toUtf8()));
        files.write(cell("file"), cell("content").replace("GOOD", good).toUtf8());
        const QString words = "check DIR --short-folder short --short-length 2 --format json";
        if (cell("file") == "en_US")
            files.remove("POSIX");
        const ToolRun run(files.words(words));
        QCOMPARE(findingsOf(run, cell("file") + ".json"), cell("findings"));
        // Beside a base that cannot be read nothing is missing, and nothing unknown.
        if (cell("findings").contains("malformed"))
            QCOMPARE(findingsOf(run, "de_DE.json"), QString());
    }

    void heedsSettings_data()
    {
        // de_DE lacks one text of three and has a wrong mark: BOTH.
        addTable(R"(
        settings | options | exit | findings
        | | 0 | BOTH
        | --fail-on info | 1 | BOTH
        | --fail-under 67 | 1 | BOTH
        | --fail-under 66 | 0 | BOTH
        | --fail-on warning --ignore missing-text | 0 | 1:33 end-punctuation A
        | --ignore missing-text:B/* --ignore end-punctuation:A/* | 0 | 1:33 end-punctuation A
        | --ignore missing-text:** --ignore end-punctuation:A | 0 |
        | --language en_US | 0 |
        | --base de_DE | 0
        .. | 1:28 missing-comment A, 1:52 missing-comment B, 2:27 end-punctuation A, 3:71 unknown-url B/C
        {"failOn": "info"} | | 1 | BOTH
        {"failOn": "info"} | --fail-on error | 0 | BOTH
        {"failUnder": 90, "ignore": ["end-punctuation"]} | | 1 | 0:0 missing-text B/C
        {"ignore": ["missing-text:**/C"]} | --ignore end-punctuation | 0 |
        {"ignor": 1, "failOn": 2, "shortLength": 0.5} | --language en_US | 1
        .. | 1:2 bad-settings, 1:24 bad-settings, 1:42 bad-settings
        {"ignore": ["mising-text", 1], "failUnder": 101} | --language en_US | 1
        .. | 1:13 bad-settings, 1:28 bad-settings, 1:45 bad-settings
        {"base": "", "base": "de_DE"} | --ignore missing-comment | 1
        .. | 1:2 bad-settings, 2:27 end-punctuation A, 3:71 unknown-url B/C
        [] | --language en_US | 1 | 1:1 bad-settings
        { | --language en_US | 1 | 1:2 bad-settings
        )");
    }
    void heedsSettings()
    {
        const LanguageFiles files;
        writeBase(files);
        files.remove("POSIX");
        files.write("de_DE", R"({"Content": {"A": {"text": "%1 l!"}, "B": {"text": "Zwei"}}})");
        if (!cell("settings").isEmpty())
            files.writeFile(".textmanager-check.json", cell("settings").toUtf8());
        const ToolRun run(files.words(("check DIR --format json " + cell("options")).trimmed()));
        const QString both = "0:0 missing-text B/C, 1:33 end-punctuation A";
        QCOMPARE(findingsOf(run), cell("findings").replace("BOTH", both));
        QCOMPARE(run.exitStatus(), cell("exit").toInt());
    }

    void printsFindings_data()
    {
        addTable(R"(
        words | exit | output | message
        check DIR --format json | 0 | {"findings":[{"class":"warning","column":0,"file":"de_DE.json",
        .. "id":"missing-text","language":"de_DE","line":0,"reason":"en_US has a text here, \″Two\″. Translate it.",
        .. "url":"B/C"}],"languages":[{"language":"de_DE","missing":1,"share":66.66666666666667,"texts":3,
        .. "translated":2},{"language":"en_US","missing":0,"share":100,"texts":3,"translated":3}]}\n |
        check DIR | 0 | de_DE.json\n  -        warning missing-text        B/C: en_US has a text here, "Two". Translat
        .. e it.\n\nde_DE    █████████████░░░░░░░  66.6 %  2 of 3 texts\nen_US    ████████████████████ 100.0 %  3 of 3 t
        .. exts\n\n0 errors, 1 warning, 0 infos.\n |
        )");
    }
    void printsFindings()
    {
        const LanguageFiles files;
        writeBase(files);
        files.remove("POSIX");
        files.write("de_DE", R"({"Content": {"A": {"text": "%1 l"}, "B": {"text": "Zwei"}}})");
        compareWithRow(ToolRun(files.words(cell("words"))), files);
    }

    void describesEachFinding()
    {
        const QString text = QString::fromUtf8(LanguageFiles::readPath(CHECKS_PAGE));
        const QString help = ToolRun({"check", "--help"}).output();
        for (const CheckDescription& check : allChecks()) {
            const QString heading =
                QString("### %1 (%2)\n").arg(check.id, nameOf(check.findingClass));
            QVERIFY2(text.contains(heading), qPrintable(heading));
            QVERIFY2(help.contains(check.id), qPrintable(check.id));
        }
        QCOMPARE(text.count("\n### "), allChecks().size());
    }
};

QTEST_GUILESS_MAIN(ToolChecksTest)
#include "tst_tool_checks.moc"
