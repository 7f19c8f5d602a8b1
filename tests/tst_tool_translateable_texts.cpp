#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"

#include <QRegularExpression>
#include <QTest>

class ToolTranslateableTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answers_data();
    void answers();
};

void ToolTranslateableTextsTest::answers_data()
{
    addTable(R"(words              | input                            | status | output | message
        all DIR Menu               |                                  | 0 | {"de_DE":"Menü"} |
        all DIR Mneu               |                                  | 1 | {}  | Mneu: no language has a text there. Did you mean Menu?
        pick --language de_DE      | {"de_DE": "d", "POSIX": "p"}     | 0 | d   | de_DE answers.
        pick --language fr_FR      | {"de_DE": "d", "POSIX": ""}      | 0 |     | no text in fr_FR, POSIX answers.
        pick                       | {"de_DE": "", "fr_FR": "f"}      | 1 |     | de_DE: empty or no text; it is left out.
        pick                       | {"fr_FR": "f"}                   | 1 |     | nor in a fallback language; there are: fr_FR.
        pick                       | {"en_US": "e"}                   | 0 | e   | the object is not valid: it has no POSIX.
        pick --format json         | {"POSIX": "p"}                   | 0 | {"found":true,"language":"POSIX","text":"p","valid":true} | no text in en_US, POSIX answers.
        pick                       | {\n"POSIX": "p",\n"ä" "e"}       | 2 |     | standard input:3:7: malformed JSON
        pick                       | []                               | 2 |     | standard input:1:1: found an array. Expected is
        pick more                  |                                  | 2 |     | pick: unexpected argument 'more'.)");
}

void ToolTranslateableTextsTest::answers()
{
    const LanguageFiles files;
    files.write("de_DE", R"({"Content": {"Menu": {"text": "Menü", "comment": ""}}})");
    files.write("fr_FR", R"({"Content": {"Menu": {"text": "", "comment": ""}}})");
    const ToolRun run(cell("words").replace("DIR", files.path()).split(' '),
                      cell("input").toUtf8());
    QString result = run.output().trimmed();
    QCOMPARE(cell("words").contains("json") ? result.remove(QRegularExpression("\\s")) : result,
             cell("output"));
    QVERIFY2(run.messages().contains(cell("message")), qPrintable(run.messages()));
    QCOMPARE(run.exitStatus(), cell("status").toInt());
}

QTEST_GUILESS_MAIN(ToolTranslateableTextsTest)
#include "tst_tool_translateable_texts.moc"
