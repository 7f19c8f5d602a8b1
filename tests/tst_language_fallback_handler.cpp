#include "Table.h"
#include "WarningCapture.h"

#include "LanguageFallbackHandler.h"

#include <QTest>

class LanguageFallbackHandlerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void choosesALanguage_data();
    void choosesALanguage();
};

void LanguageFallbackHandlerTest::choosesALanguage_data()
{
    addTable(R"(
        case                      | available         | wanted | chosen | named in the warning
        the wanted one            | de_DE en_US       | de_DE  | de_DE  |
        the first fallback        | POSIX de_DE en_US | fr_FR  | en_US  |
        the second fallback       | de_DE POSIX       | fr_FR  | POSIX  |
        case matters              | en_US POSIX       | en_us  | en_US  |
        no part of a key matches  | de_DE fr_FR       | de     |        | ("de_DE", "fr_FR")
        an empty key is a key     | de_DE             |        |        | ("de_DE")
        nothing available         |                   | en_US  |        | ()
    )");
}

void LanguageFallbackHandlerTest::choosesALanguage()
{
    const QString named = cell("named in the warning");
    QStringList warnings;
    if (!named.isEmpty())
        warnings << "Cannot find any fallback language in language key list: " + named + " !";

    LanguageFallbackHandler handler({"replaced"});
    handler.setLanguageKeyList(cell("available").split(' ', Qt::SkipEmptyParts));
    WarningCapture capture;
    QCOMPARE(handler.getResultingLanguageKey(cell("wanted")), cell("chosen"));
    QCOMPARE(capture.take(), warnings);
}

QTEST_GUILESS_MAIN(LanguageFallbackHandlerTest)
#include "tst_language_fallback_handler.moc"
