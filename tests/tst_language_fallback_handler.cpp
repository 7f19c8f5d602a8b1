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
    QTest::addColumn<QString>("available");
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QStringList>("warnings");

    const auto row = [](const char* name, const char* available, const char* wanted,
                        const char* chosen, const QStringList& warnings = {}) {
        QTest::newRow(name) << QString::fromLatin1(available) << QString::fromLatin1(wanted)
                            << QString::fromLatin1(chosen) << warnings;
    };
    const auto warning = [](const char* list) {
        return QStringList{
            QStringLiteral("Cannot find any fallback language in language key list: %1 !")
                .arg(QLatin1String(list))};
    };

    row("the wanted one", "de_DE en_US", "de_DE", "de_DE");
    row("the first fallback", "POSIX de_DE en_US", "fr_FR", "en_US");
    row("the second fallback", "de_DE POSIX", "fr_FR", "POSIX");
    row("case matters", "en_US POSIX", "en_us", "en_US");
    row("no part of a key matches", "de_DE fr_FR", "de", "", warning("(\"de_DE\", \"fr_FR\")"));
    row("an empty key is a key", "de_DE", "", "", warning("(\"de_DE\")"));
    row("nothing available", "", "en_US", "", warning("()"));
}

void LanguageFallbackHandlerTest::choosesALanguage()
{
    QFETCH(QString, available);
    QFETCH(QString, wanted);

    LanguageFallbackHandler handler({QStringLiteral("replaced")});
    handler.setLanguageKeyList(available.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    WarningCapture capture;
    QTEST(handler.getResultingLanguageKey(wanted), "chosen");
    QTEST(capture.take(), "warnings");
}

QTEST_GUILESS_MAIN(LanguageFallbackHandlerTest)
#include "tst_language_fallback_handler.moc"
