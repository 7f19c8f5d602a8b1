#include "Table.h"
#include "TextChecks.h"

#include <QRegularExpression>
#include <QTest>

namespace
{

/** A cell in which "_" is a blank that the table would trim, and "\u200B" a character. */
QString text(const QString& column)
{
    static const QRegularExpression escape("\\\\u([0-9A-F]{4})");
    QString value = cell(column).replace('_', ' ');
    for (auto match = escape.match(value); match.hasMatch(); match = escape.match(value))
        value.replace(match.capturedStart(), 6, QChar(match.captured(1).toUShort(nullptr, 16)));
    return value;
}

/** The findings as "id@offset id@offset", those of the base's own text where there is no base. */
QString check(const QString& base, const QString& own, const QString& language,
              const QString& comment = QString())
{
    const bool isBase = base.isEmpty();
    const AnalyzedText analyzedBase(base);
    const AnalyzedText analyzed(own, isBase ? nullptr : &analyzedBase);
    const WritingRules rules(language);
    QStringList found;
    for (const TextFinding& finding : checkText(
             {analyzed, isBase ? nullptr : &analyzedBase, rules, WritingRules("en_US"), comment}))
        found.append(QString("%1@%2").arg(finding.id).arg(finding.offset));
    return found.join(' ');
}

} // namespace

class ChecksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void placeholders_data()
    {
        addTable(R"(
        text                              | found
        %1 of %L2, %n, %Ln                | %1 %2 %n %n
        %1$s %2$05.1f %*d                 | %1$s %2$f %*d
        %5.2f %05d %+i %lu %c             | %f %d %i %lu %c
        %2d:%3s                           | %d %s
        %1d %2h                           | %1 %2
        %12 and %1                        | %12 %1
        50 % dans, 100 %, 50%off, 100%-ig |
        100%% sure, %%1                   | %1
        {name} { other } {0} {user.name}  | {name} {other} {0} {user.name}
        {a, b} {} {two words} {"a": 1}    |
        {n, plural, one {# file} other {{who} in # files}} {x} | {n} {who} {x}
        {n, plural, =0 {none} one {{n} file}} | {n} {n}
        )");
    }
    void placeholders()
    {
        const Placeholders placeholders(text("text"));
        QStringList names;
        for (const Placeholder& placeholder : placeholders.all())
            names.append(placeholder.name);
        QCOMPARE(names.join(' '), cell("found"));
    }

    void translations_data()
    {
        addTable(R"(
        base                       | text                          | language | findings
        %1 of %2                   | %L2, davon %1                 | de_DE |
        Page                       | Seite %1                      | de_DE | placeholders-differ@6
        %s is %d                   | %d ist %s                     | de_DE | placeholders-differ@0
        %s is %d                   | %2$d ist %1$s                 | de_DE |
        {who} has {n}              | {n} hat {wer}                 | de_DE | placeholders-differ@8
        50% full                   | %50 dolu                      | tr_TR |
        {n, plural, one {# file} other {# files}}
        .. | {n, plural, one {# plik} few {# pliki} many {# plików} other {# pliku}} | pl_PL |
        {n, plural, one {# file} other {# files}} | {n, plural, one {# plik} other {# pliku}} | pl_PL | plural-missing@0
        {n, plural, one {# file} other {# files}} | {n, plural, other {ファイル#個}} | ja_JP |
        {n, selectordinal, one {#st} other {#th}} | {n, selectordinal, other {#te}} | de_DE |
        {n, plural, one {# file} other {# files}} | {n, plural, one {# Datei} andere} | de_DE | message-syntax@26
        <b>Now</b>                 | <B>Jetzt</B>                  | de_DE |
        <b>Now</b>                 | <b>Jetzt<b>                   | de_DE | markup-differs@0
        One<br>two                 | Eins zwei                     | de_DE | markup-differs@0
        Press <Enter>, a < b       | <Eingabe> drücken, a < b      | de_DE |
        <link>here</link>          | <link>hier                    | de_DE | markup-differs@0
        See https://a.example/x.   | Siehe https://a.example/x。   | ja_JP |
        See https://a.example/x    | Siehe a.example               | de_DE | data-differs@0
        Mail a@b.example now       | Post an ab.example            | de_DE | data-differs@0
        2.5 bar, 1,000 l           | 2,5 bar, 1.000 l              | de_DE |
        1,000 l, 3 m³              | 1 000 l, 3 Kubikmeter         | fr_FR |
        12 of 30                   | ١٢ من ٣٠                      | ar_EG |
        2.50 m                     | ٢٫٥ م                         | ar_EG |
        3 items, CO2, 2nd          | 三個、二酸化炭素              | ja_JP |
        2.5 bar                    | 25 bar                        | de_DE | data-differs@0
        1,000 l                    | 1 l                           | de_DE | data-differs@0
        On 12/31/2025 at 9:05      | 31.12.2025, 9.05 Uhr          | de_DE |
        a\nb                       | a b                           | de_DE | line-breaks-differ@0
        a\nb                       | a\r\nb                        | de_DE |
        The unit stopped.          | 装置が停止した。              | ja_JP |
        The unit stopped.          | یونٹ رک گیا۔                  | ur_PK |
        The unit stopped.          | यूनिट रुक गई।                 | hi_IN |
        The unit stopped.          | หยุดแล้ว                      | th_TH |
        The unit stopped.          | Սարքը կանգնեց։                | hy_AM |
        The unit stopped.          | Gerät ist aus.                | de_DE |
        The unit stopped.          | Das Gerät hält                | de_DE | end-punctuation@13
        Restart now?               | إعادة التشغيل الآن؟           | ar_EG |
        Restart now?               | Επανεκκίνηση;                 | el_GR |
        Restart now?               | Վերագործարկե՞լ                | hy_AM |
        Restart now?               | 重启？                        | zh_CN |
        Restart now?               | Jetzt starten!                | de_DE | end-punctuation@13
        Name:                      | Nom :                         | fr_FR |
        Name:                      | Nom\u00A0:                    | fr_FR |
        Loading...                 | Lädt…                         | de_DE |
        Outdoor temperature        | Außentemp.                    | de_DE |
        Virgin Islands, U.S.       | Jungferninseln                | de_DE |
        Say "no."                  | Sag „nein“.                   | de_DE |
        Change the filter          | Change the filter             | de_DE | same-as-base@0
        Change the filter          | Change the filter             | en_GB |
        Change the filter          | Change the filter             | POSIX |
        Modbus RTU %1 - 2          | Modbus RTU %1 - 2             | de_DE |
        Page_                      | Seite                         | de_DE | edge-space@4
        Page_                      | ページ                        | ja_JP |
        Page                       | \u3000ページ                  | ja_JP | edge-space@0
        One. Two                   | Eins.__Zwei                   | de_DE | double-space@5
        One.__Two                  | Eins.__Zwei                   | de_DE |
        a\n__b                     | a\n__b                        | de_DE |
        Log in                     | Connectez-vous vous           | fr_FR |
        You log in                 | Vous vous connectez           | fr_FR |
        One by one                 | Tek tek                       | tr_TR |
        Bora Bora                  | Bora Bora                     | de_DE |
        Into the house             | In das das. Haus              | de_DE |
        Into the house             | In den Den. Haus              | de_DE | repeated-word@7
        Hm                         | Ja, ja                        | de_DE |
        Khmer                      | ភាសា\u200Bខ្មែរ               | km_KH |
        Thai                       | ภาษา\u200Bไทย                 | th_TH |
        Save                       | Spei\u200Bchern               | de_DE | invisible-character@4
        Save                       | می\u200Cخواهم                 | fa_IR |
        Save                       | क्\u200Dष                     | hi_IN |
        Save                       | Spei\u200Dchern               | de_DE | invisible-character@4
        Family                     | 👨\u200D👩                      | de_DE |
        Save                       | \u200Fحفظ (OK)                | ar_EG |
        Save                       | Sichern\u200E                 | de_DE | invisible-character@7
        Save                       | Außen\u00ADtemperatur         | de_DE |
        Save                       | \uFEFFSichern                 | de_DE | invisible-character@0
        )");
    }
    void translations()
    {
        QCOMPARE(check(text("base"), text("text"), cell("language")), cell("findings"));
    }

    void singleTexts_data()
    {
        addTable(R"(
        text         | comment                    | findings
        <b>Now       |                            | markup-differs@0
        <p>Now<br>   |                            |
        _Now         |                            | edge-space@0
        Now__then    |                            | double-space@3
        the the end  |                            | repeated-word@4
        Save\u200B   |                            | invisible-character@4
        Speichern    | Button. At most 8 characters. | too-long@0
        Speichern    | Button. At most 9 characters. |
        क्षेत्र          | max. 3 chars               |
        👨\u200D👩\u200D👧 | no more than 1 characters  |
        )");
    }
    void singleTexts()
    {
        QCOMPARE(check(QString(), text("text"), "en_US", cell("comment")), cell("findings"));
    }

    void shortTexts_data()
    {
        addTable(R"(
        text  | full     | longest | comment              | findings
        Short | A longer | 5       |                      |
        Short | A longer | 4       | At most 3 characters | short-text-too-long
        Short | A longer | 0       | At most 3 characters | too-long
        Short | Full     | 0       |                      | short-text-longer
        Short |          | 0       |                      |
        )");
    }
    void shortTexts()
    {
        const AnalyzedText analyzed(cell("text"));
        const WritingRules rules("en_US");
        QStringList found;
        for (const TextFinding& finding :
             checkShortText({analyzed, nullptr, rules, rules, cell("comment")},
                            {cell("longest").toInt(), cell("full"), {}}))
            found.append(finding.id);
        QCOMPARE(found.join(' '), cell("findings"));
    }
};

QTEST_GUILESS_MAIN(ChecksTest)
#include "tst_checks.moc"
