#include "LanguageFiles.h"
#include "Table.h"
#include "WarningCapture.h"

#include <MessagePatternInfo.h>
#include <TextManagerBase.h>
#include <TextMessages.h>

#include <QDateTime>
#include <QJsonDocument>
#include <QTest>

#include <thread>

namespace
{

QVariantMap argumentsOf(const QString& json)
{
    return parseObject(json.toUtf8()).toVariantMap();
}

} // namespace

/** Texts with arguments: plurals, numbers and dates in the language that answers. */
class TestMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("TZ", "Europe/Berlin");
        const auto write = [this](const QString& language, const QString& url, const char* text) {
            const QJsonObject node{{"text", text}};
            const QJsonObject content{{"Empty", QJsonObject{{"text", ""}}}, {url, node}};
            m_Files.write(language, QJsonDocument({{"Content", content}}).toJson());
        };
        write("de_DE", "Due", "{n, plural, one {In einem Tag fällig} other {In # Tagen fällig}}");
        write("ar_EG", "Due", "{n, plural, two {بعد يومين} few {بعد # أيام} other {بعد # يومًا}}");
        write("en_US", "Empty", "{n, plural, one {# day} other {# days}}");
        write("fr_FR", "Who", "{who} est ici");
        write("POSIX", "Plain", "{n} degC, it's '%1'");
        m_TextManager.reloadLanguage();
    }

    void followsTheRulesOfTheLanguageThatAnswers_data()
    {
        addTable(R"(
            url      | language | arguments          | message
            Due      | de_DE    | {"n": 1}           | In einem Tag fällig
            Due      | de_DE    | {"n": 1250.5}      | In 1.250,5 Tagen fällig
            Due      | ar_EG    | {"n": 2}           | بعد يومين
            Due      | ar_EG    | {"n": 5}           | بعد ٥ أيام
            Due      | ar_EG    | {"n": 11}          | بعد ١١ يومًا
            Due      |          | {"n": 1}           | In einem Tag fällig
            Empty    | ar_EG    | {"n": 1}           | 1 day
            Empty    | ar_EG    | {"n": 1250}        | 1,250 days
            Plain    | ar_EG    | {"n": 1250.5}      | 1250.5 degC, it's '%1'
            Plain    | de_DE    | {"n": 1, "more":2} | 1 degC, it's '%1'
            Empty    | xx_YY    | {"n": 1}           | 1 day
            Who      | fr_FR    | {"who": "{n} 'x'"} | {n} 'x' est ici
            Who      | fr_FR    | {"who": true}      | true est ici
            Missing  | de_DE    | {"n": 1}           |
        )");
    }
    void followsTheRulesOfTheLanguageThatAnswers()
    {
        const WarningCapture warnings;
        const TextMessages messages(m_TextManager);
        QCOMPARE(messages.getMessage(cell("url"), argumentsOf(cell("arguments")), cell("language")),
                 cell("message"));
    }

    void showsEveryKindOfValue_data()
    {
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("message");
        const QDate date(2026, 3, 29); // the clocks are put forward at 2 o'clock
        QTest::newRow("date") << "{v, date, medium}" << QVariant(date) << "29.03.2026";
        QTest::newRow("time") << "{v, time, short}" << QVariant(QTime(2, 30)) << "02:30";
        QTest::newRow("moment in another zone")
            << "{v, date, short} {v, time, short}"
            << QVariant(QDateTime(date, QTime(12, 0), Qt::UTC)) << "29.03.26 14:00";
        QTest::newRow("ulonglong")
            << "{v}" << QVariant(Q_UINT64_C(18446744073709551615)) << "18.446.744.073.709.551.615";
        QTest::newRow("longlong") << "{v}" << QVariant(Q_INT64_C(-5000000000)) << "-5.000.000.000";
        QTest::newRow("float") << "{v}" << QVariant(0.5F) << "0,5";
    }
    void showsEveryKindOfValue()
    {
        QFETCH(QString, pattern);
        QFETCH(QVariant, value);
        QTEST(TextMessages::formatPattern(pattern, {{"v", value}}, "de_DE"), "message");
    }

    void answersTheTextAsItStandsAndWarnsOnceEachTime_data()
    {
        addTable(R"(
            pattern                                                           | reason
            {n, plural, one {a}}             | no form 'other' (U_DEFAULT_KEYWORD_MISSING), at character 0
            Due in {n                        | a brace without its partner (U_UNMATCHED_BRACES), at character 7
            {n, plural, one {a} other {b{}}} | not the syntax of an argument (U_PATTERN_SYNTAX_ERROR), at character 29
            {n, number} {t, clock}           | an unknown or unfit type (U_ILLEGAL_ARGUMENT_ERROR), at character 12
            {n} of {all}                     | argument 'all' is missing
            {n, plural, other {{all}}}       | argument 'all' is missing
            {text, plural, other {#}}        | an unknown or unfit type (U_ILLEGAL_ARGUMENT_ERROR)
            {list}                           | argument 'list' cannot be shown: it is of the type QVariantList
            {date}                           | argument 'date' cannot be shown: it is of the type QDate
        )");
    }
    void answersTheTextAsItStandsAndWarnsOnceEachTime()
    {
        const QString pattern = cell("pattern");
        QJsonObject document{{"Content", QJsonObject{{"Url", QJsonObject{{"text", pattern}}}}}};
        const TextManagerBase textManager("en_US", document);
        const QVariantMap arguments{
            {"n", 1}, {"text", "one"}, {"list", QVariantList()}, {"date", QDate()}, {"t", 1}};
        WarningCapture warnings;
        for (int time = 0; time < 2; ++time) {
            QCOMPARE(TextMessages(textManager).getMessage("Url", arguments, "en_US"), pattern);
            const QStringList expected{"Unable to format message Url : " + cell("reason")};
            QCOMPARE(warnings.take(), expected);
        }
        QCOMPARE(TextMessages::formatPattern(pattern, arguments, "en_US"), pattern);
        QVERIFY(warnings.take().join("|").startsWith("Unable to format message " + pattern));
    }

    void isNotBroughtDownByDeepNesting()
    {
        WarningCapture warnings;
        const QString pattern = QString("{n, plural, other {").repeated(20000);
        QCOMPARE(TextMessages::formatPattern(pattern, {{"n", 1}}, "en_US"), pattern);
        QCOMPARE(warnings.take().size(), 1);
    }

    void formatsInSeveralThreadsWhatOneForgets()
    {
        const auto format = [](int first) {
            for (int number = first; number < 400; number += 2) {
                const QString pattern =
                    QString("{n, plural, one {#} other {#%1}}").arg(number % 200);
                const QString message = TextMessages::formatPattern(pattern, {{"n", 7}}, "de_DE");
                if (message != QString("7%1").arg(number % 200))
                    qFatal("wrong: %s", qPrintable(message));
            }
        };
        std::thread other(format, 0);
        format(1);
        other.join();
    }

    void tellsWhatIsInAPattern_data()
    {
        addTable(R"(
            pattern                                                       | contents
            {b} {a} {0} {b, number}                                       | 0,a,b
            {n, plural, =0 {none} one {a {x}} other {#}}                  | n,x plural@0(n:=0,one,other)
            It's {n, selectordinal, other {{m, plural, other {{n}}}}}     | m,n ordinal@5(n:other) plural@31(m:other)
            {who, select, on {1} other {2}}                               | who
            {n, plural, other {{v, number, #,##0.##.0}}}                  | n,v error@19
            {n, plural, one {#} other {{x, select, a {1}}}}               | n,x error@27
        )");
    }
    void tellsWhatIsInAPattern()
    {
        const MessagePatternInfo info(cell("pattern"));
        QString contents = info.getArguments().join(',');
        for (const MessagePlural& plural : info.getPlurals())
            contents += QString(" %1@%2(%3:%4)")
                            .arg(plural.isOrdinal ? "ordinal" : "plural")
                            .arg(plural.offset)
                            .arg(plural.argument, plural.categories.join(','));
        if (!info.isValid())
            contents += QString(" error@%1").arg(info.getErrorOffset());
        QCOMPARE(contents, cell("contents"));
    }

    void knowsTheCategoriesOfALanguage()
    {
        const auto& categoriesOf = MessagePatternInfo::getPluralCategories;
        QCOMPARE(categoriesOf("POSIX", false).join(','), "one,other");
        QCOMPARE(categoriesOf("POSIX", true).join(','), "few,one,other,two");
        QCOMPARE(categoriesOf("ar_EG", false).join(','), "few,many,one,other,two,zero");
    }

private:
    LanguageFiles m_Files;
    TextManagerBase m_TextManager{m_Files.path(), "de_DE", "short"};
};

QTEST_APPLESS_MAIN(TestMessages)
#include "tst_messages.moc"
