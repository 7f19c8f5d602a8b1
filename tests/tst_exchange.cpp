#include "ExchangeFormat.h"
#include "LanguageFiles.h"
#include "LanguageTags.h"
#include "Table.h"
#include "ToolRun.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace
{

using State = ExchangeUnit::State;

/** Texts that files, tools and shells are known to break. */
QStringList nastyTexts()
{
    QString controls;
    for (ushort code = 0; code < 0xA0; ++code)
        controls += QChar(code);
    QString pictures;
    for (ushort code = 0x23FF; code < 0x2430; ++code)
        pictures += QChar(code);
    return {"  leading, and behind  ",
            "a\nb\n",
            "\nc",
            "\t",
            "\"quoted\"",
            "\"",
            "''",
            "'=1",
            "=1+2",
            "-5 °C",
            "@x",
            "\r\n",
            "a]]>b <b>&amp;</b> &",
            "\\n \\x41 \\",
            "%1 %L2",
            "%d %%",
            "#| x",
            "حفظ ‏",
            "保存",
            QString::fromUcs4(U"😀𠮷"),
            "{0}",
            controls,
            pictures,
            QString(QChar(0xD800)),
            QString(QChar(0xDC00)) + "x",
            QString(QChar(0xFFFE)),
            "␛{41}",
            QString("\x1b") + "{41}",
            QString("\x1b") + "␇",
            "%C3%9C#short",
            "",
            "A/x (short text)",
            "a\u2028b\ufeff"};
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

/** Whether the bytes hold the same texts in the same order, whatever their URLs have become. */
void compareTexts(const ExchangeFormat* format, const QByteArray& bytes, const ExchangeFile& file)
{
    ExchangeFile back;
    QVERIFY(!format->read(bytes, back));
    QCOMPARE(back.units.size(), file.units.size());
    const auto isSame = [](const ExchangeUnit& one, const ExchangeUnit& other) {
        return one.baseText == other.baseText && one.text == other.text;
    };
    const auto inOrder = [](const ExchangeUnit& one, const ExchangeUnit& other) {
        return !one.isShort && other.isShort;
    };
    QVector<ExchangeUnit> units = file.units;
    std::stable_sort(units.begin(), units.end(), inOrder);
    QVERIFY(std::equal(units.begin(), units.end(), back.units.begin(), isSame));
}

} // namespace

class ExchangeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bringsBackWhatItWrote_data();
    void bringsBackWhatItWrote();
    void goesThroughOtherTools_data();
    void goesThroughOtherTools();
    void readsWhatOthersWrite_data();
    void readsWhatOthersWrite();
    void refuses_data();
    void refuses();
};

void ExchangeTest::bringsBackWhatItWrote_data()
{
    addTable("format\nxliff\npo\ntsv");
}

void ExchangeTest::bringsBackWhatItWrote()
{
    const ExchangeFormat* format = ExchangeFormat::byName(cell("format"));
    const ExchangeFile file = nastyFile();
    compare(format, format->write(file), file);
}

void ExchangeTest::goesThroughOtherTools_data()
{
    addTable(R"(
        from | to  | program  | command
        po   | po  | msgfmt   | msgfmt --check -o /dev/null from.po && cp from.po to.po
        po   | po  | msgcat   | msgcat --sort-output -o to.po from.po
        po   | po  | msgmerge | msgmerge --quiet --previous -o to.po from.po from.po
        po   | po  | polib    | /usr/bin/python3 -c 'import polib; polib.pofile("from.po").save("to.po")'
        po   | po  | pofilter | pofilter --nonotes -t untranslated -t short from.po found.po && cp from.po to.po
        xlf  | xlf | lconvert | lconvert -i from.xlf -o between.po && lconvert -i between.po -o to.xlf
        xlf  | po  | xliff2po | xliff2po --progress=none from.xlf to.po
    )");
}

void ExchangeTest::goesThroughOtherTools()
{
    const QTemporaryDir folder;
    const ExchangeFormat* from = ExchangeFormat::byExtension("x." + cell("from"));
    const ExchangeFormat* to = ExchangeFormat::byExtension("x." + cell("to"));
    const ExchangeFile file = nastyFile();
    LanguageFiles::writePath(folder.filePath("from." + cell("from")), from->write(file));
    const ToolRun run({"-c", cell("command")}, {}, folder.path(), "sh");
    qInfo("%s ran: %s", qPrintable(cell("program")), qPrintable(run.output() + run.messages()));
    QCOMPARE(run.exitStatus(), 0);
    QFile result(folder.filePath("to." + cell("to")));
    QVERIFY(result.open(QIODevice::ReadOnly));
    if (from == to)
        compare(to, result.readAll(), file);
    else
        compareTexts(to, result.readAll(), file);
}

/** What a unit is that tools are known to write otherwise: its text, and its base text if known. */
void ExchangeTest::readsWhatOthersWrite_data()
{
    addTable(R"(
        format | bytes                                                             | units
        xliff  | UNIT id="A%2Fb"><source>s</source><target>t</target>              | A/b=t(s) translated
        xliff  | UNIT id="A"><source>s</source>                                    | A=(s) missing
        xliff  | UNIT id="A"><source>s</source><target state="needs-review-l10n">t</target> | A=t(s) stale
        xliff  | UNIT id="A"><source>a<g id="1">b</g></source><target><![CDATA[<]]></target> | A=<(ab) translated
        xliff  | UNIT id="A"><source>a<x id="1"/></source><target>t</target>       | 1:1 A: holds <x>
        xliff  | UNIT id="1" resname="A"><source>s</source><target/>               | A=(s) missing
        po     | msgctxt "A"\nmsgid ""\n"s"\n"2"\nmsgstr "\x41\101"              | A=AA(s2) translated
        po     | #, c-format, fuzzy\n#\v msgid "o"\nmsgctxt "A"\nmsgid "s"\nmsgstr "t" | A=t(s) stale
        po     | #~ msgid "o"\n\nmsgctxt "A"\r\nmsgid "s"\r\nmsgstr "t"\r\n       | A=t(s) translated
        po     | msgid "s"\nmsgstr "t"                                             | 1:1 an entry without msgctxt
        po     | msgctxt "A"\nmsgid "s"\nmsgid_plural "p"\nmsgstr[0] "t"           | 1:1 an entry with plural forms
        tsv    | URL#en#de\nA#s#t                                                  | A=t(s) unknown
        tsv    | de#URL#en\r\nt#A#"s\r\n2"\r\n\r\n                                 | A=s\n2(t) unknown
        tsv    | URL#en#de\nA#s                                                    | A=(s) unknown
        tsv    | URL#en#de\nA#'=s#''t                                              | A=''t(=s) unknown
        tsv    | UTF16 URL#en#de\nA#s#t                                            | A=t(s) unknown
    )");
}

void ExchangeTest::readsWhatOthersWrite()
{
    QString text = cell("bytes").replace('#', cell("format") == "po" ? '#' : '\t');
    text.replace("\\v", "|").replace("UNIT", "<xliff><file><body><trans-unit");
    if (cell("format") == "xliff")
        text += "</trans-unit></body></file></xliff>";
    const bool isUtf16 = text.startsWith("UTF16 ");
    const QString units16 = QChar(QChar::ByteOrderMark) + text.mid(6);
    const QByteArray bytes = isUtf16 ? QByteArray(reinterpret_cast<const char*>(units16.utf16()),
                                                  2 * int(units16.size()))
                                     : text.toUtf8();
    ExchangeFile file;
    const auto fault = ExchangeFormat::byName(cell("format"))->read(bytes, file);
    QVERIFY2(!fault, fault ? qPrintable(fault->reason) : "");
    const QStringList states = {"unknown", "missing", "translated", "stale"};
    QStringList units;
    for (const ExchangeUnit& unit : qAsConst(file.units))
        units.append(
            QString("%1=%2(%3) %4")
                .arg(unit.url, unit.text, unit.baseText, states.at(static_cast<int>(unit.state))));
    for (const ExchangeFault& unusable : qAsConst(file.unusable))
        units.append(QString("1:1 %1").arg(unusable.reason));
    QCOMPARE(units.size(), 1);
    QVERIFY2(units.first().startsWith(cell("units")), qPrintable(units.first()));
}

void ExchangeTest::refuses_data()
{
    addTable(R"(
        format | bytes                                          | place  | reason
        xliff  |                                                | 1:1    | Premature end of document
        xliff  | <a/>                                           | 1:5    | found <a>, expected <xliff>
        xliff  | <xliff><file>\n<body>                          | 2:7    | Premature end of document
        xliff  | <xliff><file><trans-unit id="a"><source>a      | 1:42   | Premature end of document
        xliff  | <xliff>&e;</xliff>                             | 1:11   | Entity 'e' not declared
        xliff  | <!DOCTYPE x [EXTERNAL]><xliff>&e;</xliff>      | 1:55   | a document type is not taken
        xliff  | <!DOCTYPE x [BOMB&]><xliff>&e99;</xliff>       | 1:5972 | a document type is not taken
        xliff  | <!DOCTYPE x [BOMB% %e99;]><xliff/>             | 1:48   | Unexpected '%'
        xliff  | <xliff><file LANG="de"/><file LANG="fr"/>      | 1:64   | texts of de and of fr in one file
        po     | msgid "a"\nmsgstr "b                           | 2:10   | the quotation mark at the end is missing
        po     | msgid "a"\nmsgstr "b\                           | 2:10   | the backslash begins nothing
        po     | msgid "a"\nmsgstr "b" c                         | 2:11   | there is something behind the text
        po     | msgid "a"\nmsgstr "\y"                          | 2:9    | the backslash begins nothing
        po     | msgid "a"\nmsgstr b                             | 2:1    | found 'msgstr b', expected msgctxt
        po     | "a"                                            | 1:1    | a text that belongs to nothing
        po     | mgsid "a"                                      | 1:1    | found 'mgsid', expected msgctxt
        po     | msgctxt "a"\n\nmsgid "b"\n                     | 1:1    | needs both msgid and msgstr
        po     | \xff                                           | 0:0    | is not encoded in UTF-8
        tsv    |                                                | 1:1    | is empty
        tsv    | \xff                                           | 0:0    | is not encoded in UTF-8
        tsv    | URL#en                                         | 1:1    | found URL, en.
        tsv    | URL#en#de#fr                                   | 1:1    | the first row has to name the columns
        tsv    | URL# en#de \nA#"b                              | 2:1    | the quotation marks of this row
        tsv    | URL#en#de\nA#"b                                | 2:1    | the quotation marks of this row
        tsv    | URL#en#de\nA#"b"c#d                            | 2:1    | the quotation marks of this row
    )");
}

void ExchangeTest::refuses()
{
    const auto bomb = [](const QByteArray& mark, const QByteArray& space) {
        QByteArray entities = "<!ENTITY " + space + "e0 'x'>";
        for (int level = 1; level < 100; ++level)
            entities += "<!ENTITY " + space + "e" + QByteArray::number(level) + " '" +
                        (mark + "e" + QByteArray::number(level - 1) + ";").repeated(9) + "'>";
        return entities;
    };
    QByteArray bytes = cell("bytes").toUtf8().replace('#', '\t');
    bytes.replace("BOMB&", bomb("&", "")).replace("BOMB%", bomb("%", "% "));
    bytes.replace("EXTERNAL", R"(<!ENTITY e SYSTEM "file:///etc/passwd">)");
    bytes.replace("LANG", "target-language");
    ExchangeFile file;
    const auto fault =
        ExchangeFormat::byName(cell("format"))->read(bytes.replace("\\xff", "\xff"), file);
    QVERIFY(fault);
    QVERIFY2(fault->reason.contains(cell("reason")), qPrintable(fault->reason));
    QCOMPARE(QString("%1:%2").arg(fault->place.line).arg(fault->place.column), cell("place"));
}

QTEST_GUILESS_MAIN(ExchangeTest)
#include "tst_exchange.moc"
