#include "LanguageFiles.h"
#include "Table.h"
#include "ToolRun.h"

#include "LanguageInformation.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QMap>
#include <QRegularExpression>
#include <QTest>

namespace
{

/** A language file of texts by URL, in which "-" is no text: "A=text;B=-". */
QByteArray languageFile(const QString& texts)
{
    QJsonObject nodes;
    for (const QString& text : texts.split(';', Qt::SkipEmptyParts)) {
        if (!text.endsWith("=-"))
            nodes.insert(
                text.section('=', 0, 0),
                QJsonObject{{"text", text.section('=', 1)}, {"comment", "At most 12 characters."}});
    }
    return QJsonDocument(QJsonObject{{"Header", QJsonObject()}, {"Content", nodes}}).toJson();
}

/** All texts of a language file that are not empty, as in languageFile(). */
QString textsIn(const QString& path)
{
    const QJsonObject document = QJsonDocument::fromJson(LanguageFiles::readPath(path)).object();
    QStringList texts;
    bool ok = false;
    for (const QString& url : LanguageInformation().getAvailableUrls(document)) {
        const QString text = LanguageInformation().getObject(url, ok, document, "Content", "text");
        if (!text.isEmpty())
            texts.append(url + '=' + text);
    }
    return texts.join(';');
}

/** A file of gettext with one entry, for A in de, and what is written before it. */
QByteArray poFile(const QByteArray& before, const QByteArray& id, const QByteArray& text)
{
    return "msgid \"\"\nmsgstr \"Language: de\\n\"\n" + before + "msgctxt \"A\"\nmsgid \"" + id +
           "\"\nmsgstr \"" + text + "\"\n";
}

} // namespace

class ToolExchangeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bringsBackAFolder_data()
    {
        addTable(R"(
        format
        xliff
        po
        tsv
        )");
    }
    void bringsBackAFolder()
    {
        const LanguageFiles files;
        const ToolRun copy({"-r", EXAMPLE_LANGUAGES ".", files.path()}, {}, {}, "cp");
        QCOMPARE(copy.exitStatus(), 0);
        const auto mustRun = [&](const QString& line) {
            const ToolRun run(files.words(line + " --short-folder short"));
            QVERIFY2(run.exitStatus() == 0, qPrintable(run.messages()));
        };
        QMap<QString, QString> before;
        for (const QString& path : files.readAll().keys())
            before.insert(path, textsIn(path));
        mustRun("export DIR --all-languages -o DIR/out --as " + cell("format"));
        const QStringList names = QDir(files.path() + "out").entryList(QDir::Files);
        QVERIFY(names.size() >= 4);
        for (const QString& name : names) {
            const QString language = name.section('.', 0, 0);
            for (const QString& file : {language, "short/" + language}) {
                if (QFile::exists(files.file(file)))
                    files.write(file, languageFile(""));
            }
        }
        mustRun("import DIR DIR/out/" + names.join(" DIR/out/"));
        for (auto file = before.begin(); file != before.end(); ++file)
            QCOMPARE(textsIn(file.key()), file.value());
    }

    void exports_data()
    {
        addTable(R"(
        de      | options                                | file  | holds
        A=a;B=- | --language de -o DIR/x.po         | x.po  | #, qt-format\nmsgctxt "B"\nmsgid "base b %1"\nmsgstr ""
        A=a;B=- | --language de -o DIR/x.po              | x.po  | #. At most 12 characters.\nmsgctxt "A"
        A=a;B=- | --language de -o DIR/x.po              |       | x.po: 2 texts of de, 1 missing, 0 stale
        A=a;B=- | --language de -o DIR/x.po --only missing |     | x.po: 1 text of de, 1 missing, 0 stale
        A=a;B=- | --language de -o DIR/x.po --only stale |       | x.po: 0 texts of de
        A=a     | --language de -o DIR/x.xlf             | x.xlf | id="A" resname="A" approved="yes" maxwidth="12"
        A=a     | --language de -o DIR/x.xlf             | x.xlf | size-unit="char" xml:space="preserve"
        A=a     | --language de -o DIR/x.xlf             | x.xlf | source-language="en-US" target-language="de"
        A=a     | --language de -o DIR/x.txt --as tsv    | x.txt | ﻿URL→en_US→de→comment→short text\nA→base a→a→At
        A==1    | --language de -o DIR/x.tsv             | x.tsv | A→base a→'=1→At
        A=a     | --language POSIX -o DIR/x.xlf          |       | 'POSIX' names no language that XLIFF could tell
        A=a     | --all-languages -o DIR/o               | o/de.xlf | <target state="translated">a</target>
        A=a     | --all-languages -o DIR/o --format json |       | "language":"de","missing":1,"stale":0,"texts":2}]
        )");
    }
    void exports()
    {
        const LanguageFiles files;
        files.write("en_US", languageFile("A=base a;B=base b %1;E="));
        files.write("POSIX", languageFile(""));
        files.write("pseudo", R"({"Header": {"pseudo": "urls"}, "Content": {}})");
        files.write("de", languageFile(cell("de")));
        const ToolRun run(files.words("export DIR " + cell("options")));
        QCOMPARE(run.exitStatus(), cell("options").contains("POSIX") ? 2 : 0);
        const QByteArray holder = cell("file").isEmpty()
                                      ? (run.output() + run.messages()).toUtf8()
                                      : LanguageFiles::readPath(files.path() + cell("file"));
        QVERIFY2(holder.contains(cell("holds").toUtf8()), holder.constData());
    }

    void imports_data()
    {
        addTable(R"(
        de        | rows                         | options       | exit | after    | message
        A=a;B=b 1 | A→base a→neu                 |               | 0 | A=neu;B=b 1 | x.tsv: 1 text written to de, 0
        A=a       | A→base a→neu                 | --dry-run     | 0 | A=a         | 1 text would be written to de
        A=a       | A→base a→→new comment\nA→    |               | 0 | A=a         | 0 texts written
        A=a       | A→old a→neu                  |               | 2 | A=a         | x.tsv:2:1: A: the base text has
        A=a       | A→old a→neu                  | --stale       | 0 | A=neu       | 1 text written
        A=a       | A→base a→a\nG→gone→weg       |               | 1 | A=a         | x.tsv:3:1: G: is gone: 'en_US'
        A=a       | G→gone→weg                   |               | 2 | A=a         | 0 there already, 1 left out
        A=a       | B→base b %1→neu              |               | 2 | A=a         | x.tsv:2:1: B: The text lacks %1.
        A=a       | B→base b %1→neu              | --force       | 0 | A=a;B=neu   | 1 text written
        A=a       | A→base a→{n, plural, one {x} |               | 2 | A=a         | The message cannot be formatted
        A=a       | A→base a→"﻿x"                 |               | 0 | A=x         | 1 text written
        A=a       | A→base a→␛{D800}             |               | 2 | A=a         | could not be read again
        A=a       | A→base a→neu\nA→base a→neuer |               | 1 | A=neu       | x.tsv:3:1: A: stands there twice
        A=a       | A→base a→neu→→kurz           |               | 1 | A=neu       | short text of A: name the folder
        A=a       | A→base a→neu→→kurz           | --short-folder s | 0 | A=neu    | x.tsv: 2 texts written to de
        A=a       | A→base a→neu                 | --base de     | 2 | A=a         | is translated from 'en_US', and
        A=a       | A→base a→neu             | --language fr | 2 | A=a         | is of 'fr', and there is no such
        A=a       | A→base a→neu                 | --language en_US | 2 | A=a      | is of the base language 'en_US'
        A=a       | A→base a→neu                 | DIR/no.po     | 1 | A=neu       | cannot read DIR/no.po
        A=a       | A→base a→neu                 | DIR/x.tsv     | 1 | A=neu       | is of 'de', as a file before it
        A=a       | A→base a→neu             | DIR/bomb.xlf  | 1 | A=neu       | bomb.xlf:1:31: malformed XLIFF: a
        A=a       |                              | DIR/fuzzy.po  | 2 | A=a         | fuzzy.po:4:1: A: is marked as to
        )");
    }
    void imports()
    {
        const LanguageFiles files;
        const QByteArray base = languageFile("A=base a;B=base b %1");
        const QByteArray german = languageFile(cell("de"));
        files.write("en_US", base);
        files.write("s/en_US", base);
        files.write("de", german);
        files.writeFile("bomb.xlf", "<!DOCTYPE x [<!ENTITY e 'x'>]><xliff/>");
        files.writeFile("fuzzy.po", poFile("#, fuzzy\n", "base a", "neu"));
        files.writeFile("x.tsv",
                        "URL\ten_US\tde\tcomment\tshort text\n" + cell("rows").toUtf8() + "\n");
        const QString words = cell("rows").isEmpty() ? "import DIR " : "import DIR DIR/x.tsv ";
        const ToolRun run(files.words((words + cell("options")).simplified()));
        compareWithRow(run, files);
        QCOMPARE(textsIn(files.file("de")), cell("after"));
        QCOMPARE(files.read("en_US"), base);
        QVERIFY(!files.read("de").contains("new comment"));
        if (run.exitStatus() == 2)
            QCOMPARE(files.read("de"), german);
        QCOMPARE(QFile::exists(files.file("s/de")), cell("options").startsWith("--short-folder"));
    }

    /** What an import leaves of a file that a person wrote, byte for byte. */
    void keepsOtherBytes_data()
    {
        addTable(R"(
        before                                                | after
        {"x": 1.0, "Content": {"A":  {"text" : "", "n": []}}} | {"x": 1.0, "Content": {"A":  {"text" : "neu", "n": []}}}
        {"Content":{"A":{"text":"\u0061\/","comment":"c"}}}   | {"Content":{"A":{"text":"neu","comment":"c"}}}
        {\r\n"Content": {\r\n"A": {"text": ""}}\r\n}          | {\r\n"Content": {\r\n"A": {"text": "neu"}}\r\n}
        {"Content":{"A":{"n":{}}}}                            | {"Content":{"A":{"comment":"","n":{},"text":"neu"}}}
        {"Content":{"A":{"text":1}}}                          | {"Content":{"A":{"text":1}}}
        )");
    }
    void keepsOtherBytes()
    {
        const LanguageFiles files;
        files.write("en_US", R"({"Content": {"A": {"text": "base a", "comment": ""}}})");
        files.write("de", cell("before").toUtf8());
        files.writeFile("x.tsv", "URL\ten_US\tde\nA\tbase a\tneu\n");
        const ToolRun run(files.words("import DIR DIR/x.tsv"));
        QCOMPARE(files.read("de"), cell("after").toUtf8());
        const bool isRefused = cell("after") == cell("before");
        QCOMPARE(run.exitStatus(), isRefused ? 2 : 0);
        QCOMPARE(run.says("A: cannot be written: Content/A/text is a number there"), isRefused);
    }

    /** A short text that is stale stays so until it is marked with its folder. */
    void marksShortTexts_data()
    {
        addTable(R"(
        words                                        | exit | stale | output                             | message
        mark DIR de A --current                      | 0    | 1     | marked A\n                         |
        mark DIR de A --current --short-folder short | 0    | 0     | marked A\nmarked short text of A\n |
        mark DIR de B --current --short-folder short | 1    | 2     | | B: there is no text
        mark DIR en_US A --current                   | 2    | 2     | | 'en_US' is the base, which is not
        )");
    }
    void marksShortTexts()
    {
        const LanguageFiles files;
        for (const QString name : {"", "short/"}) {
            files.write(name + "en_US", languageFile("A=base a"));
            files.write(name + "de", languageFile("A=a"));
            ToolRun(files.words("set DIR/" + name + " en_US A --text new"));
        }
        compareWithRow(ToolRun(files.words(cell("words"))), files);
        const ToolRun check(files.words("check DIR --short-folder short --format json"));
        QCOMPARE(check.output().count("stale-text"), cell("stale").toInt());
    }

    /** After a command each, what check says of A in de: nothing, or the old base text. */
    void knowsStaleTexts_data()
    {
        addTable(R"(
        commands                                                                   | old
        de A=neu                                                                   | no record
        set DIR en_US C --text new --comment c                                     | no record
        en_US A=new                                                                | base a
        en_US A=new; en_US A=base~a                                                |
        en_US A=new; de A=neu                                                      |
        en_US A=new; de A=neu; en_US A=newer                                       | new
        en_US A=new; de B=neu                                                      | base a
        en_US A=new; mark DIR de A --current                                       |
        en_US A=new; mark DIR de A --current --dry-run                             | base a
        en_US B=new; en_US A=new                                                   | base a
        en_US A=new; export DIR --language de -o DIR/x.po; import DIR DIR/x.po     | base a
        en_US A=new; export DIR --language de -o DIR/x.tsv; import DIR DIR/x.tsv   | base a
        en_US A=new; import DIR DIR/confirmed.po                                   |
        en_US A=new; import DIR DIR/fuzzy.po --stale                               | base a
        import DIR DIR/older.po --stale                                            | older
        en_US A=new; remove DIR en_US A; set DIR en_US A --text newer --comment c  | base a
        en_US A=new; import DIR DIR/new.po                                         |
        en_US A=new; import DIR DIR/old.po --stale                                 | base a
        en_US A=new; rename DIR A N; de B=b2; rename DIR N A                       | base a
        en_US A=new; short/de A=kurz                                               | base a
        )");
    }
    void knowsStaleTexts()
    {
        const LanguageFiles files;
        for (const QString name : {"", "short/"}) {
            files.write(name + "en_US", languageFile("A=base a;B=base b"));
            files.write(name + "de", languageFile("A=a;B=b"));
        }
        files.writeFile("confirmed.po", poFile("", "new", "a"));
        files.writeFile("new.po", poFile("", "new", "neu"));
        files.writeFile("old.po", poFile("", "base a", "neu"));
        files.writeFile("older.po", poFile("", "older", "neu"));
        files.writeFile("fuzzy.po", poFile("#, fuzzy\n", "new", "neu"));
        for (const QString& command : cell("commands").split("; ")) {
            QString words = command;
            words.replace(QRegularExpression("^(short/)?(\\w+) (\\w)=(\\S+)$"),
                          "set DIR/\\1 \\2 \\3 --text \\4");
            const ToolRun run(files.words(words).replaceInStrings("~", " "));
            QVERIFY2(run.exitStatus() == 0, qPrintable(run.messages()));
        }
        const bool isStale = !cell("old").isEmpty() && cell("old") != "no record";
        const QString output =
            ToolRun(files.words("check DIR --format json --language de")).output();
        const QString found = R"(The base text was \"%1\" when this was written)";
        QVERIFY2(output.contains("findings"), qPrintable(output));
        QCOMPARE(output.contains(found.arg(cell("old"))), isStale);
        QCOMPARE(output.contains("stale-text"), isStale);
        const QString record = ".textmanager-base-texts";
        QCOMPARE(QFile::exists(files.path() + record), cell("old") != "no record");
        QVERIFY(!QFile::exists(files.path() + "short/" + record));
        ToolRun(files.words("export DIR --language de -o DIR/x.po --only stale"));
        const QByteArray previous =
            "#, fuzzy\n#| msgid \"" + cell("old").toUtf8() + "\"\nmsgctxt \"A\"\n";
        QCOMPARE(LanguageFiles::readPath(files.path() + "x.po").contains(previous), isStale);
    }

    void makesPseudoLanguages_data()
    {
        // "»" and "«" stand for the marks around a text from right to left, "№" for "#".
        addTable(R"(
        style              | xx
                            | A=[%1 <b>Šåvé</b> &amp; ļöŕém];M/C=[ÖĶ];N=[{n, plural,\n one {№ fîļé} other {'
         .. {'å'}'}} ļöŕém îpšûm đö]
         --style urls       | A=A;M/C=M/C;N=N
         --style widest     | A=%1 <b>Save</b> &amp;;M/C=保存;N={n, plural,\n one {№ file} other {'{'a'}'}}
         --rtl --style urls | A=»A«;M/C=»M/C«;N=»N«
        )");
    }
    void makesPseudoLanguages()
    {
        const LanguageFiles files;
        files.write("de", R"({"Content": {"M": {"childs": {"C": {"text": "保存"}}}}})");
        files.write("en_US", R"({"Content": {"A": {"text": "%1 <b>Save</b> &amp;", "comment": "c"},
            "M": {"childs": {"C": {"text": "OK", "comment": ""}}},
            "N": {"text": "{n, plural,\n one {\u0023 file} other {'{'a'}'}}", "comment": ""}}})");
        files.write("old", R"({"Header": {"pseudo": "urls"},
            "Content": {"A": {"text": "a very wide text indeed", "comment": ""}}})");
        const QString record = ".textmanager-base-texts";
        files.writeFile(record, "base\ten_US\nM/C\ten_US\told\n");
        const QString style = cell("style").isEmpty() ? QString() : ' ' + cell("style");
        QString texts = cell("xx").replace("№", "#");
        if (style.contains("--rtl"))
            texts.replace("»", "\u200f\u202e").replace("«", "\u202c\u200f");
        for (int time = 0; time < 2; ++time) { // what it made itself it may replace
            const ToolRun run(files.words("pseudo DIR -o xx" + style));
            QVERIFY2(run.exitStatus() == 0, qPrintable(run.messages()));
            QCOMPARE(textsIn(files.file("xx")), texts);
        }
        QVERIFY(!LanguageFiles::readPath(files.path() + record).contains("\txx\t"));
    }
};

QTEST_GUILESS_MAIN(ToolExchangeTest)
#include "tst_tool_exchange.moc"
