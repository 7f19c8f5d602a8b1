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
        copyFolder(QFINDTESTDATA("../examples/languages"), files, "");
        copyFolder(QFINDTESTDATA("../examples/languages/short"), files, "short/");
        shortFolder = " --short-folder short";
    } else {
        QCOMPARE(ToolRun({files.path(), "--small"}, {}, {}, QFINDTESTDATA("iso_codes_folder.py"))
                     .exitStatus(),
                 0);
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
        de       | words                                               | exit | file  | holds
        A=a;B=-  | export DIR --language de -o DIR/x.po                 | 0 | x.po  | msgctxt "B"\nmsgid "base b %1"\nmsgstr ""
        A=a;B=-  | export DIR --language de -o DIR/x.po --only missing  | 0 | x.po  | #. At most 12 characters.\n#, qt-format\nmsgctxt "B"
        A=a      | export DIR --language de -o DIR/x.xlf                | 0 | x.xlf | id="A" resname="A" approved="yes" maxwidth="12" size-unit="char" xml:space="preserve"
        A=a      | export DIR --language de -o DIR/x.xlf                | 0 | x.xlf | source-language="en-US" target-language="de"
        A=a      | export DIR --language de -o DIR/x.txt --as tsv       | 0 | x.txt | ﻿URL#en_US#de#comment#short text\nA#base a#a#At most
        A=a      | export DIR --language de -o DIR/x.txt                | 2 |       | x.txt: the extension tells no format. Name it with --as
        A=a      | export DIR --language POSIX -o DIR/x.xlf             | 2 |       | 'POSIX' names no language that XLIFF could tell
        A=a      | export DIR --language dd -o DIR/x.xlf                | 2 |       | there is no language 'dd' in DIR; 'textmanager new' starts it. Did you mean de?
        A=a      | export DIR --language en_US -o DIR/x.xlf             | 2 |       | 'en_US' is the base, which is not translated
        A=a      | export DIR --base it --language de -o DIR/x.xlf      | 2 |       | there is no base language 'it' in DIR
        A=a      | export DIR --language de -o DIR/no/x.xlf             | 2 |       | cannot be written
    )");
}

void ToolExchangeTest::exports()
{
    const LanguageFiles files;
    files.write("en_US", languageFile("A=base a;B=base b %1;E="));
    files.write("POSIX", languageFile(""));
    files.write("de", languageFile(cell("de")));
    const ToolRun run(files.words(cell("words")));
    QCOMPARE(run.exitStatus(), cell("exit").toInt());
    const QByteArray holder =
        cell("file").isEmpty() ? run.messages().toUtf8() : bytesOf(files.path() + cell("file"));
    const QChar separator = cell("file") == "x.txt" ? '\t' : '#';
    QVERIFY2(holder.contains(files.fill(cell("holds")).replace('#', separator).toUtf8()),
             holder.constData());
}

void ToolExchangeTest::imports_data()
{
    addTable(R"(
        de        | rows                           | options     | exit | after     | message
        A=a;B=b 1 | A#base a#neu                   |             | 0 | A=neu;B=b 1  | x.tsv: 1 texts written to de, 0 are there already, 0 left out.
        A=a       | A#base a#neu                   | --dry-run   | 0 | A=a          | x.tsv: 1 texts would be written to de
        A=a       | A#base a##new comment\nA#      |             | 0 | A=a          | 0 texts written
        A=a       | A#old a#neu                    |             | 2 | A=a          | x.tsv:2:1: A: the base text has changed since the export, from "old a" to "base a"
        A=a       | A#old a#neu                    | --stale     | 0 | A=neu        | 1 texts written
        A=a       | A#base a#a\nG#gone#weg         |             | 1 | A=a          | x.tsv:3:1: G: is gone: 'en_US' has no such text any more.
        A=a       | B#base b %1#neu                |             | 2 | A=a          | x.tsv:2:1: B: The text lacks %1.
        A=a       | B#base b %1#neu                | --force     | 0 | A=a;B=neu    | 1 texts written
        A=a       | A#base a#neu\nA#base a#neuer   |             | 1 | A=neu        | x.tsv:3:1: A: stands there twice, first in line 2
        A=a       | A#base a#neu##kurz             |             | 1 | A=neu        | x.tsv:2:1: short text of A: name the folder of the short texts
        A=a       | A#base a#neu                   | --base de   | 2 | A=a          | is translated from 'en_US', and the base is 'de'
        A=a       | A#base a#neu                   | --language fr | 2 | A=a        | is of 'fr', and there is no such language
        A=a       | A#base a#neu                   | --language en_US | 2 | A=a     | is of the base language 'en_US'
        A=a       | A#base a#"neu                  |             | 2 | A=a          | x.tsv:2:1: the quotation marks of this row do not fit
        A=a       | A#base a#neu                   | DIR/no.po   | 1 | A=neu        | cannot read DIR/no.po
    )");
}

void ToolExchangeTest::imports()
{
    const LanguageFiles files;
    const QByteArray base = languageFile("A=base a;B=base b %1");
    files.write("en_US", base);
    files.write("de", languageFile(cell("de")));
    const QString rows = "URL\ten_US\tde\tcomment\tshort text\n" + cell("rows").replace('#', '\t');
    LanguageFiles::writePath(files.path() + "x.tsv", rows.toUtf8());
    const ToolRun run(
        files.words("import DIR DIR/x.tsv " + cell("options")).filter(QRegularExpression(".")));
    QVERIFY2(run.says(files.fill(cell("message"))), qPrintable(run.messages()));
    QCOMPARE(run.exitStatus(), cell("exit").toInt());
    QCOMPARE(textsIn(files.file("de")), cell("after"));
    QCOMPARE(bytesOf(files.file("en_US")), base);
    QVERIFY(!bytesOf(files.file("de")).contains("new comment"));
}

/** After a command each, what check says of A in de: nothing, or the old base text. */
void ToolExchangeTest::knowsStaleTexts_data()
{
    addTable(R"(
        commands                                                                              | old
        set DIR de A --text neu                                                               | no record
        set DIR en_US C --text new --comment c                                                | no record
        set DIR en_US A --text new                                                            | base a
        set DIR en_US A --text new; set DIR en_US A --text newer                              | base a
        set DIR en_US A --text new; set DIR en_US A --text base~a                             |
        set DIR en_US A --text new; set DIR de A --text neu                                   |
        set DIR en_US A --text new; set DIR de A --text neu; set DIR en_US A --text newer     | new
        set DIR en_US A --text new; set DIR de B --text neu                                   | base a
        set DIR en_US A --text new; mark DIR de A --current                                   |
        set DIR en_US A --text new; mark DIR de A --current --dry-run                         | base a
        set DIR en_US B --text new; set DIR en_US A --text new                                | base a
        set DIR en_US A --text new; export DIR --language de -o DIR/x.po; import DIR DIR/x.po | base a
        set DIR en_US A --text new; export DIR --language de -o DIR/x.tsv; import DIR DIR/x.tsv | base a
        set DIR en_US A --text new; import DIR DIR/confirmed.po                               |
        set DIR en_US A --text new; import DIR DIR/new.po                                     |
        set DIR en_US A --text new; import DIR DIR/old.po --stale                             | base a
        set DIR en_US A --text new; rename DIR A N; set DIR de B --text b2; rename DIR N A    | base a
        set DIR en_US A --text new; set DIR/short de A --text kurz                            | base a
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
        const ToolRun run(files.words(command).replaceInStrings("~", " "));
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

void ToolExchangeTest::makesPseudoLanguages_data()
{
    addTable(R"(
        words                               | exit | xx                          | message
        pseudo DIR -o xx                    | 0 | A=[%1 <b>Šåvé</b> ļöŕ];M/C=[ÖĶ]     |
        pseudo DIR -o xx --style urls       | 0 | A=A;M/C=M/C                      |
        pseudo DIR -o xx --style widest     | 0 | A=%1 <b>Save</b>;M/C=保存        |
        pseudo DIR -o xx --rtl --style urls | 0 | A=>A<;M/C=>M/C<                  |
        pseudo DIR -o de                    | 2 |                                  | de.json: was not made by this command, and is left alone
        pseudo DIR -o en_US                 | 2 |                                  | en_US.json: was not made by this command
        pseudo DIR -o xx --base it          | 2 |                                  | there is no base language 'it'
        pseudo DIR --style urls             | 2 |                                  | --output is missing
    )");
}

void ToolExchangeTest::makesPseudoLanguages()
{
    const LanguageFiles files;
    const QByteArray german =
        R"({"Content": {"M": {"childs": {"C": {"text": "保存", "comment": ""}}}}})";
    files.write("de", german);
    files.write("en_US", R"({"Content": {"A": {"text": "%1 <b>Save</b>", "comment": "c"},
        "M": {"childs": {"C": {"text": "OK", "comment": ""}}}}})");
    files.write(
        "old",
        R"({"Header": {"pseudo": "urls"}, "Content": {"A": {"text": "a very wide text indeed", "comment": ""}}})");
    for (int time = 0; time < 2; ++time) { // what it made itself it may replace
        const ToolRun run(files.words(cell("words")));
        QCOMPARE(run.exitStatus(), cell("exit").toInt());
        QVERIFY2(run.says(cell("message")), qPrintable(run.messages()));
        const QString texts =
            cell("xx").replace('>', QString("\u200f\u202e")).replace('<', QString("\u202c\u200f"));
        QCOMPARE(textsIn(files.file("xx")), cell("words").contains("--rtl") ? texts : cell("xx"));
    }
    QCOMPARE(bytesOf(files.file("de")), german);
}

QTEST_GUILESS_MAIN(ToolExchangeTest)
#include "tst_tool_exchange.moc"
