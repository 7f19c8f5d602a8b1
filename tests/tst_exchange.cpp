#include "ExchangeFormat.h"
#include "LanguageFiles.h"
#include "LanguageTags.h"
#include "Table.h"
#include "ToolRun.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace
{

using State = ExchangeUnit::State;

QString charactersFrom(ushort first, ushort end)
{
    QString characters;
    for (ushort code = first; code < end; ++code)
        characters += QChar(code);
    return characters;
}

/** Texts that files, tools and shells are known to break. */
QStringList nastyTexts()
{
    const QByteArray json =
        R"x({"texts": ["  leading, and behind  ", "a\nb\n", "\nc", "\t", "\u0022quoted\u0022",
        "\u0022", "\u0027\u0027", "\u0027=1", "=1+2", "-5 °C", "@x", "\r\n", "a]]>b <b>&amp;</b> &", "\\n \\x41 \\",
        "%1 %L2", "%d %%", "#| x", "حفظ ‏", "保存", "\ud83d\ude00\ud842\udfb7", "{0}", "␛{41}", "\u001b{41}",
        "\u001b␇", "%C3%9C#short", "", "A/x (short text)", "a\u2028b\ufeff"]})x";
    return parseObject(json)["texts"].toVariant().toStringList() +
           QStringList{charactersFrom(0, 0xA0), charactersFrom(0x23FF, 0x2430), QChar(0xD800),
                       QString(QChar(0xDC00)) + "x", QChar(0xFFFE)};
}

ExchangeFile nastyFile()
{
    ExchangeFile file;
    file.baseLanguage = "en_US";
    file.language = "sr_RS@latin";
    const QStringList texts = nastyTexts();
    for (const QString& text : texts) {
        ExchangeUnit unit;
        unit.url = "A/" + text;
        unit.baseText = text.isEmpty() ? "empty" : text; // texts without one do not travel
        unit.text = texts.at(texts.size() - 1 - file.units.size() / 3);
        if (text.contains('%'))
            unit.text = text; // the tools of gettext compare placeholders
        unit.comment = text;
        unit.state = unit.text.isEmpty() ? State::Missing : State::Translated;
        file.units.append(unit);
        unit.url += "/" + text;
        unit.state = unit.text.isEmpty() ? State::Missing : State::Stale;
        unit.previousBaseText = unit.text.isEmpty() ? QString() : "was " + text;
        file.units.append(unit);
        unit.isShort = true;
        unit.state = State::Translated;
        unit.text = text.isEmpty() ? "x" : text;
        unit.previousBaseText.clear();
        file.units.append(unit);
    }
    return file;
}

/** Whether the bytes hold all that the file does. */
void compare(const ExchangeFormat* format, const QByteArray& bytes, const ExchangeFile& file)
{
    ExchangeFile back;
    const auto fault = format->read(bytes, back);
    QVERIFY2(!fault, fault ? qPrintable(fault->reason) : "");
    QVERIFY(back.unusable.isEmpty());
    QVERIFY(isSameLanguage(back.language, file.language));
    QVERIFY(isSameLanguage(back.baseLanguage, file.baseLanguage));
    const bool isTsv = format == ExchangeFormat::byName("tsv");
    for (const ExchangeUnit& unit : file.units) {
        const auto isIt = [&](const ExchangeUnit& other) {
            return other.url == unit.url && other.isShort == unit.isShort;
        };
        const auto found = std::find_if(back.units.begin(), back.units.end(), isIt);
        QVERIFY2(found != back.units.end(), qPrintable(unit.url));
        QCOMPARE(found->text, unit.text);
        QCOMPARE(found->baseText, isTsv && unit.isShort ? QString() : unit.baseText);
        QCOMPARE(found->previousBaseText, isTsv ? QString() : unit.previousBaseText);
        QCOMPARE(found->state, isTsv ? State::Unknown : unit.state);
    }
}

} // namespace

class ExchangeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goesThroughOtherTools_data()
    {
        addTable(R"(
        format | command
        xlf    | cp from.xlf to.xlf
        tsv    | cp from.tsv to.tsv
        po     | msgfmt --check -o /dev/null from.po && cp from.po to.po
        po     | msgcat --sort-output -o to.po from.po
        po     | msgmerge --quiet --previous -o to.po from.po from.po
        po     | /usr/bin/python3 -c 'import polib; polib.pofile("from.po").save("to.po")'
        po     | pofilter --nonotes -t untranslated -t short from.po found.po && cp from.po to.po
        xlf    | xliff2po --progress=none from.xlf read.po && msgcat read.po >/dev/null && cp from.xlf to.xlf
        xlf    | lconvert -i from.xlf -o between.po && lconvert -i between.po -o to.xlf
        )");
    }
    void goesThroughOtherTools()
    {
        const QTemporaryDir folder;
        const ExchangeFormat* format = ExchangeFormat::byExtension("x." + cell("format"));
        const ExchangeFile file = nastyFile();
        LanguageFiles::writePath(folder.filePath("from." + cell("format")), format->write(file));
        const ToolRun run({"-c", cell("command")}, {}, folder.path(), "sh");
        qInfo("ran: %s", qPrintable(cell("command")));
        QVERIFY2(run.exitStatus() == 0, qPrintable(run.output() + run.messages()));
        compare(format, LanguageFiles::readPath(folder.filePath("to." + cell("format"))), file);
    }

    /** Of a unit its text, and its base text where that is known; of a fault its place and reason.
     */
    void readsWhatOthersWrite_data()
    {
        addTable(R"(
        format | bytes                                                   | found
        xliff  | UNIT id="A%2Fb"><source>s</source><target>t</target>    | A/b=t(s) unknown
        xliff  | UNIT id="A" approved="yes"><source>s</source><target>t</target> | A=t(s) translated
        xliff  | UNIT id="A" approved="no"><source>s</source><target state="needs-translation">t</target> | A=t(s) stale
        xliff  | UNIT id="A" approved="no"><source>s</source><target state="final">t</target> | A=t(s) unknown
        xliff  | UNIT id="A"><source>s</source><target>t</target><note>n<x/></note> | A=t(s) unknown
        xliff  | UNIT id="A"><source>s</source><target>t</target>
        .. <alt-trans><source>o</source><target>p</target></alt-trans> | A=t(s) unknown
        xliff  | UNIT id="A"><source>s</source>                          | A=(s) missing
        xliff  | UNIT id="A"><source>s</source><target state="needs-review-l10n">t</target> | A=t(s) stale
        xliff  | UNIT id="A"><source>a<g id="1">b</g></source><target><![CDATA[<]]></target> | A=<(ab) unknown
        xliff  | UNIT id="A"><source>a<x id="1"/></source><target>t</target> | A: holds <x>
        xliff  | UNIT id="1" resname="A"><source>s</source><target/>     | A=(s) missing
        po     | msgctxt "A"\nmsgid ""\n"s"\n"2"\nmsgstr "\x41\101"      | A=AA(s2) translated
        po     | msgctxt "A"\nmsgid "s"\nmsgstr "\303\xbc"               | A=ü(s) translated
        po     | #, c-format, fuzzy\n#\v msgid "o"\nmsgctxt "A"\nmsgid "s"\nmsgstr "t" | A=t(s) stale
        po     | #~ msgid "o"\n\nmsgctxt "A"\r\nmsgid "s"\r\nmsgstr "t"\r\n | A=t(s) translated
        po     | msgid "s"\nmsgstr "t"                                   | an entry without msgctxt
        po     | msgctxt "A"\nmsgid "s"\nmsgid_plural "p"\nmsgstr[0] "t" | an entry with plural forms
        tsv    | URL→en→de\nA→s→t                                        | A=t(s) unknown
        tsv    | en→URL→de\r\ns→A→"t\r\n2"\r\n\r\n                       | A=t\n2(s) unknown
        tsv    | en→seen by→de→URL→comment\ns→x→t→A\n                   | A=t(s) unknown
        tsv    | URL→en→de\nA→s\n                                        | A=(s) unknown
        tsv    | URL→en→de\nA→s | 2:1 the file is cut off in this row, which has 2 of 3
        tsv    | URL→en→de\nA→'=s→''t                                    | A=''t(=s) unknown
        tsv    | UTF16 URL→en→de\nA→s→t                                  | A=t(s) unknown
        xliff  |                                                         | 1:1 Premature end of document
        xliff  | <a/>                                                    | 1:5 found <a>, expected <xliff>
        xliff  | <xliff version="2.0"><file id="f"/>  | 1:22 it is of version 2.0. Save it as XLIFF 1.2
        xliff  | <xliff><file>\n<body>                                   | 2:7 Premature end of document
        xliff  | <xliff>&e;</xliff>                                      | 1:11 Entity 'e' not declared
        xliff  | <!DOCTYPE x [EXTERNAL]><xliff>&e;</xliff>               | 1:55 a document type is not taken
        xliff  | <!DOCTYPE x [<!ENTITY e 'x'><!ENTITY f '&e;&e;'>]><xliff>&f;</xliff> | 1:51 a document type is not
        xliff  | <!DOCTYPE x [<!ENTITY % e 'x'> %e;]><xliff/>            | 1:35 Unexpected
        xliff  | <xliff><file LANG="de"/><file LANG="fr"/>               | 1:64 texts of de and of fr in one file
        po     | msgid "a"\nmsgstr "b\n"                                 | 2:10 the quotation mark at the end is missing
        po     | msgid "a"\nmsgstr "b\\n"                                | 2:10 the backslash begins nothing
        po     | msgid "a"\nmsgstr "b" c                                 | 2:11 there is something behind the text
        po     | msgid "a"\nmsgstr b                                     | 2:1 found 'msgstr b', expected msgctxt
        po     | "a"                                                     | 1:1 found a text that belongs to nothing
        po     | msgctxt "A"\nmsgid "s"\nmsgstr "\303x"                | 3:9 the backslash begins nothing
        po     | # nothing                                               | 1:1 is empty
        po     | mgsid "a"                                               | 1:1 found 'mgsid', expected msgctxt
        po     | msgctxt "a"\n\nmsgid "b"\n                              | 1:1 an entry needs both msgid and msgstr
        po     | \xff                                                    | 0:0 is not encoded in UTF-8
        tsv    |                                                         | 1:1 is empty
        tsv    | \xff                                                    | 0:0 is not encoded in UTF-8
        tsv    | URL→en                                                  | 1:1 the first row has to name the columns
        tsv    | URL→ en→de \nA→"b                                       | 2:1 the quotation marks of this row
        tsv    | URL→en→de\nA→"b                                         | 2:1 the quotation marks of this row
        tsv    | URL→en→de\nA→"b"c→d                                     | 2:1 the quotation marks of this row
        )");
    }
    void readsWhatOthersWrite()
    {
        QString text = cell("bytes").replace("LANG", "target-language");
        text.replace("EXTERNAL", "<!ENTITY e SYSTEM 'file:///etc/passwd'>");
        text.replace("\\v", "|");
        if (text.contains("UNIT"))
            text = text.replace("UNIT", "<xliff><file><body><trans-unit") +
                   "</trans-unit></body></file></xliff>";
        const bool isUtf16 = text.startsWith("UTF16 ");
        const QString units16 = QChar(QChar::ByteOrderMark) + text.mid(6);
        const QByteArray bytes = isUtf16
                                     ? QByteArray(reinterpret_cast<const char*>(units16.utf16()),
                                                  2 * int(units16.size()))
                                     : text.toUtf8();
        ExchangeFile file;
        const ExchangeFormat* format = ExchangeFormat::byName(cell("format"));
        const auto fault = format->read(QByteArray(bytes).replace("\\xff", "\xff"), file);
        QVERIFY(fault || file.units.size() + file.unusable.size() == 1);
        const ExchangeUnit unit = file.units.value(0);
        const QStringList states = {"unknown", "missing", "translated", "stale"};
        QString found = QString("%1=%2(%3) ").arg(unit.url, unit.text, unit.baseText) +
                        states.at(static_cast<int>(unit.state));
        if (fault)
            found = QString("%1:%2 %3")
                        .arg(fault->place.line)
                        .arg(fault->place.column)
                        .arg(QString(fault->reason).remove(QRegularExpression("malformed .*?: ")));
        else if (!file.unusable.isEmpty())
            found = file.unusable.first().reason;
        QVERIFY2(found.startsWith(cell("found")), qPrintable(found));
    }
};

QTEST_GUILESS_MAIN(ExchangeTest)
#include "tst_exchange.moc"
