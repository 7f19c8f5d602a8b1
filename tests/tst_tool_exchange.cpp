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

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

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
    const QJsonObject document = QJsonDocument::fromJson(bytesOf(path)).object();
    QStringList texts;
    bool ok = false;
    for (const QString& url : LanguageInformation().getAvailableUrls(document)) {
        const QString text = LanguageInformation().getObject(url, ok, document, "Content", "text");
        if (!text.isEmpty())
            texts.append(url + '=' + text);
    }
    return texts.join(';');
}

void copyFolder(const QString& from, const LanguageFiles& files, const QString& prefix)
{
    for (const QString& name : QDir(from).entryList({"*.json"}, QDir::Files))
        LanguageFiles::writePath(files.path() + prefix + name, bytesOf(from + '/' + name));
}

} // namespace

class ToolExchangeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bringsBackAFolder_data();
    void bringsBackAFolder();
    void exports_data();
    void exports();
    void imports_data();
    void imports();
    void keepsOtherBytes_data();
    void keepsOtherBytes();
    void marksShortTexts();
    void knowsStaleTexts_data();
    void knowsStaleTexts();
    void makesPseudoLanguages_data();
    void makesPseudoLanguages();
};

void ToolExchangeTest::bringsBackAFolder_data()
{
    addTable("texts | format\n example | xlf\n example | po\n example | tsv\n iso | xlf\n iso | "
             "po\n iso | tsv");
}

void ToolExchangeTest::bringsBackAFolder()
{
    const LanguageFiles files;
    const QString extension = cell("format");
    QString shortFolder;
    if (cell("texts") == "example") {
        copyFolder(EXAMPLE_LANGUAGES, files, "");
        copyFolder(EXAMPLE_LANGUAGES "short", files, "short/");
        shortFolder = " --short-folder short";
    } else {
        QCOMPARE(ToolRun({files.path(), "--small"}, {}, {}, ISO_CODES_FOLDER).exitStatus(), 0);
    }
    const QString format = extension == "xlf" ? "xliff" : extension;
    const ToolRun exported(
        files.words("export DIR --all-languages -o DIR/out --as " + format + shortFolder));
    QVERIFY2(exported.exitStatus() == 0, qPrintable(exported.messages()));
    const QStringList names = QDir(files.path() + "out").entryList(QDir::Files);
    QVERIFY(names.size() >= 4);
    for (const QString& name : names) {
        const QString path = files.path() + "out/" + name;
        if (extension == "po")
            QCOMPARE(ToolRun({"--check", "-o", "/dev/null", path}, {}, {}, "msgfmt").messages(),
                     QString());
        const QString language = name.section('.', 0, 0);
        QMap<QString, QString> before;
        for (const QString& file : {language, "short/" + language}) {
            before.insert(file, textsIn(files.file(file)));
            if (!before[file].isEmpty())
                files.write(file, languageFile(""));
        }
        const ToolRun run(files.words("import DIR " + path + shortFolder));
        QVERIFY2(run.exitStatus() == 0, qPrintable(run.messages()));
        for (auto file = before.begin(); file != before.end(); ++file)
            QCOMPARE(textsIn(files.file(file.key())), file.value());
    }
}

void ToolExchangeTest::exports_data()
{
    addTable(R"(
        de      | options                               | exit | file  | holds
        A=a;B=- | --language de -o DIR/x.po             | 0 | x.po  | msgctxt "B"\nmsgid "base b %1"\nmsgstr ""
        A=a;B=- | --language de -o DIR/x.po             | 0 | x.po  | #, qt-format\nmsgctxt "B"
        A=a;B=- | --language de -o DIR/x.po             | 0 | x.po  | #. At most 12 characters.\nmsgctxt "A"
        A=a;B=- | --language de -o DIR/x.po             | 0 |       | x.po: 2 texts of de, 1 missing, 0 stale
        A=a;B=- | --language de -o DIR/x.po --only missing | 0 |    | x.po: 1 texts of de, 1 missing, 0 stale
        A=a;B=- | --language de -o DIR/x.po --only stale | 0 |      | x.po: 0 texts of de
        A=a     | --language de -o DIR/x.xlf            | 0 | x.xlf | id="A" resname="A" approved="yes" maxwidth="12"
        A=a     | --language de -o DIR/x.xlf            | 0 | x.xlf | size-unit="char" xml:space="preserve"
        A=a     | --language de -o DIR/x.xlf            | 0 | x.xlf | source-language="en-US" target-language="de"
        A=a     | --language de -o DIR/x.txt --as tsv   | 0 | x.txt | ﻿URL#en_US#de#comment#short text\nA#base a#a#At
        A==1    | --language de -o DIR/x.tsv            | 0 | x.tsv | A#base a#'=1#At
        A=a     | --language de -o DIR/x.txt            | 2 |       | x.txt: the extension tells no format. Name it with
        A=a     | --language POSIX -o DIR/x.xlf         | 2 |       | 'POSIX' names no language that XLIFF could tell
        A=a     | --language dd -o DIR/x.xlf            | 2 |       | there is no language 'dd' in DIR; 'textmanager
        A=a     | --language dd -o DIR/x.xlf            | 2 |       | Did you mean de?
        A=a     | --language en_US -o DIR/x.xlf         | 2 |       | 'en_US' is the base, which is not translated
        A=a     | --base it --language de -o DIR/x.xlf  | 2 |       | there is no base language 'it' in DIR
        A=a     | --language de -o DIR/no/x.xlf         | 2 |       | cannot be written
        A=a     | --all-languages -o DIR/de.json        | 2 |       | cannot be made a folder
        A=a     | --all-languages --language de -o DIR  | 2 |       | expected either --language or --all-languages
        A=a     | --language de                         | 2 |       | --output is missing
        A=a     | --all-languages -o DIR/o              | 0 | o/de.xlf | <target state="translated">a</target>
        A=a     | --all-languages -o DIR/o --format json | 0 |      | "language":"de","missing":1,"stale":0,"texts":2}]
    )");
}

void ToolExchangeTest::exports()
{
    const LanguageFiles files;
    files.write("en_US", languageFile("A=base a;B=base b %1;E="));
    files.write("POSIX", languageFile(""));
    files.write("pseudo", R"({"Header": {"pseudo": "urls"}, "Content": {}})");
    files.write("de", languageFile(cell("de")));
    const ToolRun run(files.words("export DIR " + cell("options")));
    QCOMPARE(run.exitStatus(), cell("exit").toInt());
    const QByteArray holder = cell("file").isEmpty() ? (run.output() + run.messages()).toUtf8()
                                                     : bytesOf(files.path() + cell("file"));
    const bool isTsv = !cell("file").isEmpty() && !cell("file").endsWith(".po");
    const QString holds = files.fill(cell("holds"));
    QVERIFY2(holder.contains((isTsv ? QString(holds).replace('#', '\t') : holds).toUtf8()),
             holder.constData());
}

void ToolExchangeTest::imports_data()
{
    addTable(R"(
        de        | rows                         | options       | exit | after      | message
        A=a;B=b 1 | A#base a#neu                 |               | 0 | A=neu;B=b 1   | x.tsv: 1 texts written to de, 0
        A=a       | A#base a#neu                 | --dry-run     | 0 | A=a           | 1 texts would be written to de
        A=a       | A#base a##new comment\nA#    |               | 0 | A=a           | 0 texts written
        A=a       | A#old a#neu                  |               | 2 | A=a           | x.tsv:2:1: A: the base text has
        A=a       | A#old a#neu                  |               | 2 | A=a           | from "old a" to "base a"
        A=a       | A#old a#neu                  | --stale       | 0 | A=neu         | 1 texts written
        A=a       | A#base a#a\nG#gone#weg       |               | 1 | A=a           | x.tsv:3:1: G: is gone: 'en_US'
        A=a       | G#gone#weg                   |               | 2 | A=a           | 0 are there already, 1 left out
        A=a       | B#base b %1#neu              |               | 2 | A=a           | x.tsv:2:1: B: The text lacks %1.
        A=a       | B#base b %1#neu              | --force       | 0 | A=a;B=neu     | 1 texts written
        A=a       | A#base a#<b>neu              |               | 2 | A=a           | x.tsv:2:1: A: Of the tags, <b> is
        A=a       | A#base a#{n, plural, one {x} |               | 2 | A=a           | The message cannot be formatted
        A=a       | A#base a#␛{D800}             |               | 2 | A=a           | could not be read again
        A=a       | A#base a#"a ""b"" \"          |               | 0 | A=a "b" \     | 1 texts written
        A=a       | A#base a#neu\nA#base a#neuer |               | 1 | A=neu         | x.tsv:3:1: A: stands there twice
        A=a       | A#base a#neu##kurz           |               | 1 | A=neu         | short text of A: name the folder
        A=a       | A#base a#neu##kurz           | --short-folder s | 0 | A=neu      | x.tsv: 2 texts written to de
        A=a       | A#base a#neu                 | --base de     | 2 | A=a           | is translated from 'en_US', and
        A=a       | A#base a#neu                 | --language fr | 2 | A=a           | is of 'fr', and there is no such
        A=a       | A#base a#neu                 | --language en_US | 2 | A=a        | is of the base language 'en_US'
        A=a       | A#base a#"neu                |               | 2 | A=a           | x.tsv:2:1: the quotation marks of
        A=a       | A#base a#neu                 | DIR/no.po     | 1 | A=neu         | cannot read DIR/no.po
        A=a       | A#base a#neu                 | DIR/x.tsv     | 1 | A=neu         | is of 'de', as a file before it
        A=a       | A#base a#neu                 | DIR/bomb.xlf  | 1 | A=neu         | bomb.xlf:1:31: malformed XLIFF: a
        A=a       | A#base a#a                   | DIR/fuzzy.po  | 1 | A=a           | is of 'de', as a file before it
        A=a       |                              | DIR/fuzzy.po  | 2 | A=a           | fuzzy.po:4:1: A: is marked as to
    )");
}

void ToolExchangeTest::imports()
{
    const LanguageFiles files;
    const QByteArray base = languageFile("A=base a;B=base b %1");
    files.write("en_US", base);
    files.write("s/en_US", base);
    files.write("de", languageFile(cell("de")));
    const QByteArray german = bytesOf(files.file("de"));
    LanguageFiles::writePath(files.path() + "bomb.xlf", "<!DOCTYPE x [<!ENTITY e 'x'>]><xliff/>");
    LanguageFiles::writePath(files.path() + "fuzzy.po",
                             "msgid \"\"\nmsgstr \"Language: de\\n\"\n#, fuzzy\nmsgctxt \"A\"\n"
                             "msgid \"base a\"\nmsgstr \"neu\"\n");
    const QString rows = "URL\ten_US\tde\tcomment\tshort text\n" + cell("rows").replace('#', '\t');
    LanguageFiles::writePath(files.path() + "x.tsv", rows.toUtf8());
    const QString words = cell("rows").isEmpty() ? "import DIR " : "import DIR DIR/x.tsv ";
    const ToolRun run(files.words(words + cell("options")).filter(QRegularExpression(".")));
    QVERIFY2(run.says(files.fill(cell("message"))), qPrintable(run.messages()));
    QCOMPARE(run.exitStatus(), cell("exit").toInt());
    QCOMPARE(textsIn(files.file("de")), cell("after"));
    QCOMPARE(bytesOf(files.file("en_US")), base);
    QVERIFY(!bytesOf(files.file("de")).contains("new comment"));
    if (run.exitStatus() == 2)
        QCOMPARE(bytesOf(files.file("de")), german);
    QCOMPARE(QFile::exists(files.file("s/de")), cell("options").startsWith("--short-folder"));
}

/** What an import leaves of a file that a person wrote, byte for byte. */
void ToolExchangeTest::keepsOtherBytes_data()
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

void ToolExchangeTest::keepsOtherBytes()
{
    const LanguageFiles files;
    files.write("en_US", R"({"Content": {"A": {"text": "base a", "comment": ""}}})");
    files.write("de", cell("before").toUtf8());
    LanguageFiles::writePath(files.path() + "x.tsv", "URL\ten_US\tde\nA\tbase a\tneu\n");
    const ToolRun run(files.words("import DIR DIR/x.tsv"));
    QCOMPARE(bytesOf(files.file("de")), cell("after").toUtf8());
    const bool isRefused = cell("after") == cell("before");
    QCOMPARE(run.exitStatus(), isRefused ? 2 : 0);
    QCOMPARE(run.says("A: cannot be written: Content/A/text is a number there"), isRefused);
}

/** After a command each, what check says of A in de: nothing, or the old base text. */
void ToolExchangeTest::knowsStaleTexts_data()
{
    addTable(R"(
        commands                                                                   | old
        de A=neu                                                                   | no record
        set DIR en_US C --text new --comment c                                     | no record
        en_US A=new                                                                | base a
        en_US A=new; en_US A=newer                                                 | base a
        en_US A=new; en_US A=base~a                                                |
        en_US A=new; de A=neu                                                      |
        en_US A=new; de A=neu; en_US A=newer                                       | new
        en_US A=new; de B=neu                                                      | base a
        en_US A=new; mark DIR de A --current                                       |
        en_US A=new; mark DIR de A --current --short-folder short                  |
        en_US A=new; mark DIR de A --current --dry-run                             | base a
        en_US B=new; en_US A=new                                                   | base a
        en_US A=new; export DIR --language de -o DIR/x.po; import DIR DIR/x.po     | base a
        en_US A=new; export DIR --language de -o DIR/x.tsv; import DIR DIR/x.tsv   | base a
        en_US A=new; import DIR DIR/confirmed.po                                   |
        en_US A=new; import DIR DIR/new.po                                         |
        en_US A=new; import DIR DIR/old.po --stale                                 | base a
        en_US A=new; rename DIR A N; de B=b2; rename DIR N A                       | base a
        en_US A=new; short/de A=kurz                                               | base a
    )");
}

void ToolExchangeTest::knowsStaleTexts()
{
    const LanguageFiles files;
    for (const QString name : {"", "short/"}) {
        files.write(name + "en_US", languageFile("A=base a;B=base b"));
        files.write(name + "de", languageFile("A=a;B=b"));
    }
    const auto writePo = [&](const char* name, const QByteArray& id, const QByteArray& text) {
        LanguageFiles::writePath(files.path() + name,
                                 "msgid \"\"\nmsgstr \"Language: de\\n\"\nmsgctxt \"A\"\nmsgid \"" +
                                     id + "\"\nmsgstr \"" + text + "\"\n");
    };
    writePo("confirmed.po", "new", "a");
    writePo("new.po", "new", "neu");
    writePo("old.po", "base a", "neu");
    for (const QString& command : cell("commands").split("; ")) {
        QString words = command;
        words.replace(QRegularExpression("^(short/)?(\\w+) (\\w)=(\\S+)$"),
                      "set DIR/\\1 \\2 \\3 --text \\4");
        const ToolRun run(files.words(words).replaceInStrings("~", " "));
        QVERIFY2(run.exitStatus() == 0, qPrintable(run.messages()));
    }
    const ToolRun check(files.words("check DIR --format json --language de"));
    const QString found =
        QString("The base text was \\\"%1\\\" when this was written").arg(cell("old"));
    const bool isStale = !cell("old").isEmpty() && cell("old") != "no record";
    QVERIFY2(check.output().contains(isStale ? found : "\"findings\":"),
             qPrintable(check.output()));
    QCOMPARE(check.output().contains("stale-text"), isStale);
    QCOMPARE(QFile::exists(files.path() + ".textmanager-base-texts"), cell("old") != "no record");
    QCOMPARE(QFile::exists(files.path() + "short/.textmanager-base-texts"), false);
    ToolRun(files.words("export DIR --language de -o DIR/x.po --only stale"));
    const QByteArray previous =
        "#, fuzzy\n#| msgid \"" + cell("old").toUtf8() + "\"\nmsgctxt \"A\"\n";
    QCOMPARE(bytesOf(files.path() + "x.po").contains(previous), isStale);
}

/** A short text that is stale stays so until it is marked with its folder. */
void ToolExchangeTest::marksShortTexts()
{
    const LanguageFiles files;
    for (const QString name : {"", "short/"}) {
        files.write(name + "en_US", languageFile("A=base a"));
        files.write(name + "de", languageFile("A=a"));
        ToolRun(files.words("set DIR/" + name + " en_US A --text new"));
    }
    const QString check = "check DIR --short-folder short --format json";
    const auto countStale = [&] {
        return ToolRun(files.words(check)).output().count("stale-text");
    };
    QCOMPARE(countStale(), 2);
    QCOMPARE(ToolRun(files.words("mark DIR de A --current")).output(), QString("marked A\n"));
    QCOMPARE(countStale(), 1);
    const QString mark = "mark DIR de A --current --short-folder short";
    QCOMPARE(ToolRun(files.words(mark)).output(), QString("unchanged A\nmarked short text of A\n"));
    QCOMPARE(countStale(), 0);
    const ToolRun gone(files.words("mark DIR de B --current --short-folder short"));
    QCOMPARE(gone.exitStatus(), 1);
    QVERIFY(gone.says("B: there is no text to mark."));
}

void ToolExchangeTest::makesPseudoLanguages_data()
{
    addTable(R"(
        words                               | exit | xx                          | message
        pseudo DIR -o xx                    | 0
        .. | A=[%1 <b>Šåvé</b> &amp; ļöŕém];M/C=[ÖĶ];N=[{n, plural,\n one {# fîļé} other {'{'å'}'}} ļöŕém îpšûm đö] |
        pseudo DIR -o xx --style urls       | 0 | A=A;M/C=M/C;N=N                  |
        pseudo DIR -o xx --style widest     | 0
        .. | A=%1 <b>Save</b> &amp;;M/C=保存;N={n, plural,\n one {# file} other {'{'a'}'}} |
        pseudo DIR -o xx --style widest --rtl | 0
        .. | A=»%1 <b>Save</b> &amp;«;M/C=»保存«;N=»{n, plural,\n one {# file} other {'{'a'}'}}« |
        pseudo DIR -o de                    | 2 |                               | de.json: was not made by this command
        pseudo DIR -o POSIX                 | 2 |                                  | 'POSIX' answers where other
        pseudo DIR -o xx --base it          | 2 |                                  | there is no base language 'it'
        pseudo DIR --style urls             | 2 |                                  | --output is missing
    )");
}

void ToolExchangeTest::makesPseudoLanguages()
{
    const LanguageFiles files;
    const QByteArray german = R"({"Content": {"M": {"childs": {"C": {"text": "保存"}}}}})";
    files.write("de", german);
    files.write("en_US", R"({"Content": {"A": {"text": "%1 <b>Save</b> &amp;", "comment": "c"},
        "M": {"childs": {"C": {"text": "OK", "comment": ""}}},
        "N": {"text": "{n, plural,\n one {# file} other {'{'a'}'}}", "comment": ""}}})");
    files.write("old", R"({"Header": {"pseudo": "urls"},
        "Content": {"A": {"text": "a very wide text indeed", "comment": ""}}})");
    const QString record = files.path() + ".textmanager-base-texts";
    LanguageFiles::writePath(record, "base\ten_US\nM/C\ten_US\told\n");
    for (int time = 0; time < 2; ++time) { // what it made itself it may replace
        const ToolRun run(files.words(cell("words")));
        QCOMPARE(run.exitStatus(), cell("exit").toInt());
        QVERIFY2(run.says(cell("message")), qPrintable(run.messages()));
        const QString texts =
            cell("xx").replace("»", QString("\u200f\u202e")).replace("«", QString("\u202c\u200f"));
        QCOMPARE(textsIn(files.file("xx")), cell("words").contains("--rtl") ? texts : cell("xx"));
    }
    QCOMPARE(bytesOf(files.file("de")), german);
    QVERIFY2(!bytesOf(record).contains("\txx\t"), bytesOf(record).constData());
}

QTEST_GUILESS_MAIN(ToolExchangeTest)
#include "tst_tool_exchange.moc"
