#include "CheckList.h"
#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"

#include <QFile>
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
    files.write("short/en_US", R"({"Content": {"B": {"text": "2", "comment": "At most 2 characters"}}})");
}

/** "file:line:column id url" of each finding but for those of files that nobody asks about. */
QString findingsOf(const ToolRun& run, const QString& file = QString())
{
    QStringList found;
    const QJsonArray findings = parseObject(run.output().toUtf8()).value("findings").toArray();
    for (const QJsonValue& value : findings) {
        const QJsonObject finding = value.toObject();
        if (!file.isEmpty() && finding.value("file") != file)
            continue;
        const QString place = QString("%1:%2").arg(finding.value("line").toInt()).arg(finding.value("column").toInt());
        found.append(QStringList{place, finding.value("id").toString(), finding.value("url").toString()}.join(' ').trimmed());
    }
    return found.join(", ");
}

} // namespace

class ToolChecksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsInFiles_data();
    void findsInFiles();
    void findsInBase_data();
    void findsInBase();
    void heedsSettings_data();
    void heedsSettings();
    void printsFindings_data();
    void printsFindings();
    void describesEachFinding();
};

void ToolChecksTest::findsInFiles_data()
{
    // GOOD stands for all the texts of the base.
    addTable(R"(
        file     | content                                             | findings
        de_DE    | {"Content": {GOOD}}                                 |
        de_DE    | {"Content": {"A": {"text": "%1 l"}, "B": {"text": "Zwei"}}} | 0:0 missing-text B/C
        de_DE    | {"Content": {"A": {"text": ""}, "B": {"text": "Zwei", "C": {"text": "Zwei"}}}} | 1:27 empty-text A
        de_DE    | {"Content": {GOOD, "P": {"text": "P"}}}             | 1:117 placeholders-differ P
        de_DE    | {"Content": {GOOD, "AA": {"text": "x"}}}            | 1:118 unknown-url AA
        de_DE    | {"Content": {"A": {"text": 7}, "B": "x"}}           | 1:27 wrong-type A/text, 1:36 wrong-type B
        de_DE    | {"Content": {"A": {"text": "%1 l"}, "B": {"text": "Zwei", "childs": "x"}}} | 1:71 wrong-type B
        de_DE    | {"Content": {GOOD, "A": {"text": "%1 l"}}}          | 1:107 repeated-key A
        de_DE    | {"Content": {GOOD, "x/y": {}, "": {}, "childsX": {}}} | 1:107 unreachable-key x/y, 1:118 unreachable-key, 1:126 unreachable-key childsX
        de_DE    | {"Content": {"A": {"text": "%1 l"}, "B": {"text": "Z", "X": {}, "childs": {"C": {"text": "Z"}}}}} | 1:56 unreachable-key B/X
        de_DE    | {"Content": {"A": {"text": "%1 Liter"}, "B": {"text": "Zwei", "childs": {"C": {"text": "Two"}}}}} | 1:27 too-long A, 1:84 inconsistent-text B/C
        de_DE    | {"Content": {"A": {"text": "ä\n\u0041😀 x "}, "B": {"text": "Zwei", "childs": {"C": {"text": "Zwei"}}}}} | 1:27 line-breaks-differ A, 1:27 placeholders-differ A, 1:41 edge-space A
        de_DE    | {"Content": {"A" {}}}                               | 1:18 malformed-json
        de_DE    | {}                                                  | 1:1 no-content
        short/de_DE | {"Content": {"B": {"text": "2"}}}                |
        short/de_DE | {"Content": {}}                                  |
        short/de_DE | {"Content": {"B": {"text": "222"}}}              | 1:27 short-text-too-long B
        short/de_DE | {"Content": {"A": {"text": "%1"}, "B": {"text": ""}, "Q": {"text": "x"}}} | 1:52 empty-text B, 1:69 unknown-url Q
    )");
}

void ToolChecksTest::findsInFiles()
{
    const LanguageFiles files;
    writeBase(files);
    const QString good = R"("A": {"text": "%1 l"}, "B": {"text": "2!", "childs": {"C": {"text": "2!"}}})";
    files.write("de_DE", R"({"Content": {"A": {"text": "%1 l"}, "B": {"text": "2!", "childs": {"C": {"text": "2!"}}}}})");
    QString content = row("content");
    files.write(cell("file"), content.replace("GOOD", good).toUtf8());
    const ToolRun run(files.words("check DIR --short-folder short --short-length 2 --format json"));
    QCOMPARE(findingsOf(run, cell("file") + ".json"), cell("findings"));
}
