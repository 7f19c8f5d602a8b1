#include "LanguageFiles.h"
#include "WarningCapture.h"

#include "TextManagerBase.h"

#include <QDir>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <thread>

using TextManagerDefinitions::HeaderInfo;

namespace
{

const QString deDe = QStringLiteral("de_DE");
const QString enUs = QStringLiteral("en_US");
const QString posix = QStringLiteral("POSIX");
const QString shortFolder = QStringLiteral("short");

/** A language document with one node, A, whose text is @p text. */
QByteArray oneText(const QByteArray& text)
{
    return R"({"Content": {"A": {"text": ")" + text + R"(", "comment": "of )" + text + R"("}}})";
}

/** Makes the process's current directory another one for as long as it lives. */
class CurrentDirectory
{
public:
    explicit CurrentDirectory(const QString& path) { QDir::setCurrent(path); }
    ~CurrentDirectory() { QDir::setCurrent(m_Previous); }
    Q_DISABLE_COPY_MOVE(CurrentDirectory)

private:
    const QString m_Previous = QDir::currentPath();
};

/** Reaches what is kept for subclasses. */
class ReachableTextManager : public TextManagerBase
{
public:
    using TextManagerBase::m_Mutex;
    using TextManagerBase::m_ShortLanguageMap;
    using TextManagerBase::TextManagerBase;
};

} // namespace

class TextManagerBaseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadsFolders_data();
    void loadsFolders();
    void loadsTheCurrentDirectoryInPlaceOfAnEmptyFolder();
    void parsesOneFile_data();
    void parsesOneFile();
    void derivesFileNames();
    void extractsLanguages_data();
    void extractsLanguages();

    void keepsLanguagesAcrossReloads_data();
    void keepsLanguagesAcrossReloads();
    void announcesReloadsWithoutTheLock();
    void hasOneSignalAndOneSlot();

    void answersTextsAndComments_data();
    void answersTextsAndComments();
    void answersShortTexts_data();
    void answersShortTexts();
    void answersFromMemory();
    void answersHeaders_data();
    void answersHeaders();
    void answersHeadersAndUrlsOfTheFirstFallback();
    void answersWhileReloading();
};

void TextManagerBaseTest::loadsFolders_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("languages");
    QTest::addColumn<int>("warnings");

    const QByteArray good = oneText("x");
    const auto row = [](const char* name, const char* names, const QByteArray& bytes,
                        const QStringList& languages, int warnings) {
        QTest::newRow(name) << QString::fromLatin1(names).split(QLatin1Char(' ')) << bytes
                            << languages << warnings;
    };
    row("by extension", "fr_FR.json de_DE.json notes.txt", good, {deDe, QStringLiteral("fr_FR")},
        0);
    row("names end in the extension, dot or not", "xjson", good, {QStringLiteral("xjson")}, 0);
    row("whatever the case of the extension", "AT.JSON", good, {QStringLiteral("AT")}, 0);
    row("the key ends at the first dot", "de_DE.v2.json", good, {deDe}, 0);
    row("half written", "de_DE.json", good.left(good.size() - 1), {}, 0);
    row("empty", "de_DE.json", "", {}, 0);
    row("without content: one warning", "de_DE.json", R"({"Header": {}})", {}, 1);
    row("an array: one warning", "de_DE.json", "[1]", {}, 1);
    row("content of any type", "de_DE.json", R"({"Content": 1})", {deDe}, 0);
}

void TextManagerBaseTest::loadsFolders()
{
    QFETCH(QStringList, names);
    QFETCH(QByteArray, bytes);

    const LanguageFiles files;
    for (const QString& name : qAsConst(names)) {
        QFile file(files.path() + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QVERIFY(QDir().mkpath(files.file(QStringLiteral("a_folder"))));
    const CurrentDirectory emptyFolder(files.file(QStringLiteral("a_folder")));

    WarningCapture capture;
    const TextManagerBase manager(files.path(), deDe, QString());
    QTEST(manager.getAvailableLanguages(), "languages");

    QFETCH(int, warnings);
    const QStringList expected =
        QStringList{
            QStringLiteral("No 'Content'-key found in language file: \"%1\"").arg(files.file(deDe))}
            .mid(0, warnings);
    QCOMPARE(capture.take(), expected);
}

void TextManagerBaseTest::loadsTheCurrentDirectoryInPlaceOfAnEmptyFolder()
{
    const LanguageFiles languages;
    languages.write(deDe, oneText("full"));
    const LanguageFiles current;
    current.write(deDe, oneText("of the current directory"));
    const CurrentDirectory there(current.path());

    const TextManagerBase withoutShortFolder(languages.path(), deDe, QString());
    QCOMPARE(withoutShortFolder.getShortText(QStringLiteral("A"), deDe),
             QStringLiteral("of the current directory"));

    TextManagerBase withoutFolder(QString(), deDe, QString());
    QCOMPARE(withoutFolder.getAvailableLanguages(), QStringList());
    withoutFolder.reloadLanguage();
    QCOMPARE(withoutFolder.getText(QStringLiteral("A"), deDe),
             QStringLiteral("of the current directory"));
}

void TextManagerBaseTest::parsesOneFile_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isLanguageFile");
    QTest::addColumn<bool>("isAssigned");
    QTest::addColumn<int>("warnings");

    QTest::newRow("good") << oneText("x") << true << true << 0;
    QTest::newRow("malformed: untouched") << QByteArray("{") << false << false << 0;
    QTest::newRow("no content: assigned all the same")
        << QByteArray(R"({"Header": {}})") << false << true << 1;
}

void TextManagerBaseTest::parsesOneFile()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isAssigned);
    const LanguageFiles files;
    files.write(deDe, bytes);
    TextManagerBase manager(QString(), deDe, QString());
    const QJsonObject untouched{{QStringLiteral("untouched"), true}};

    QJsonObject object = untouched;
    WarningCapture capture;
    QTEST(manager.loadAndParseFromJson(files.file(deDe), object), "isLanguageFile");
    QCOMPARE(object, isAssigned ? parseObject(bytes) : untouched);
    QTEST(capture.take().size(), "warnings");

    object = untouched;
    QVERIFY(!manager.loadAndParseFromJson(files.file(QStringLiteral("missing")), object));
    QCOMPARE(object, untouched);
    QCOMPARE(capture.take(), QStringList());
}

void TextManagerBaseTest::derivesFileNames()
{
    const TextManagerBase full(QStringLiteral("/data/lang/"), deDe, shortFolder);
    QCOMPARE(full.getLanguageName(), deDe);
    QCOMPARE(full.getLanguageFileNameFromLanguageName(deDe),
             QStringLiteral("/data/lang/de_DE.json"));
    QCOMPARE(full.getShortLanguageFilepath(), QStringLiteral("/data/lang/short"));
    QCOMPARE(full.getShortLanguageFileNameFromLanguageName(deDe),
             QStringLiteral("/data/lang/short/de_DE.json"));

    const TextManagerBase bare(QStringLiteral("/data/lang"), deDe, QString());
    QCOMPARE(bare.getLanguageFileNameFromLanguageName(deDe),
             QStringLiteral("/data/langde_DE.json"));
    QCOMPARE(bare.getShortLanguageFilepath(), QString());
    QCOMPARE(bare.getShortLanguageFileNameFromLanguageName(deDe), QString());
}

void TextManagerBaseTest::extractsLanguages_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("language");
    QTest::newRow("last part") << "a/b/de_DE"
                               << "de_DE";
    QTest::newRow("empty last part") << "a/b/"
                                     << "";
    QTest::newRow("no separator") << "de_DE"
                                  << "de_DE";
    QTest::newRow("nothing") << ""
                             << "";
}

void TextManagerBaseTest::extractsLanguages()
{
    QFETCH(QString, url);
    QTEST(TextManagerBase::extractLanguageFromTextUrl(url), "language");
}

void TextManagerBaseTest::keepsLanguagesAcrossReloads_data()
{
    QTest::addColumn<QByteArray>("bytes"); // null: the file is removed
    QTest::addColumn<QString>("text");

    QTest::newRow("changed") << oneText("new") << "new";
    QTest::newRow("half written") << oneText("new").left(20) << "old";
    QTest::newRow("truncated to nothing") << QByteArray("") << "old";
    QTest::newRow("no content") << QByteArray("{}") << "old";
    QTest::newRow("removed") << QByteArray() << "old";
    QTest::newRow("the text is gone from it") << QByteArray(R"({"Content": {}})") << "";
}

void TextManagerBaseTest::keepsLanguagesAcrossReloads()
{
    QFETCH(QByteArray, bytes);
    const LanguageFiles files;
    files.write(deDe, oneText("old"));
    files.write(QStringLiteral("short/de_DE"), oneText("old"));
    ReachableTextManager manager(files.path(), deDe, shortFolder);
    if (bytes.isNull()) {
        files.remove(deDe);
        files.remove(QStringLiteral("short/de_DE"));
    } else {
        files.write(deDe, bytes);
        files.write(QStringLiteral("short/de_DE"), bytes);
    }

    WarningCapture capture;
    manager.reloadLanguage();
    QTEST(manager.getText(QStringLiteral("A"), deDe), "text");
    QTEST(manager.getShortText(QStringLiteral("A"), deDe), "text");
    QCOMPARE(manager.getAvailableLanguages(), QStringList{deDe});
    QCOMPARE(manager.m_ShortLanguageMap.keys(), QStringList{deDe});
}

void TextManagerBaseTest::announcesReloadsWithoutTheLock()
{
    const LanguageFiles files;
    ReachableTextManager manager(files.path(), deDe, shortFolder);
    QSignalSpy reloads(&manager, &TextManagerBase::languageReloaded);
    bool isLockFree = false;
    connect(&manager, &TextManagerBase::languageReloaded, &manager, [&] {
        // From another thread: the mutex is recursive, this one could take it anyway.
        std::thread([&] {
            isLockFree = manager.m_Mutex.tryLock();
            if (isLockFree)
                manager.m_Mutex.unlock();
        }).join();
    });

    manager.reloadLanguage(); // no file at all, announced all the same
    QCOMPARE(reloads.count(), 1);
    QVERIFY(isLockFree);
}

void TextManagerBaseTest::hasOneSignalAndOneSlot()
{
    const QMetaObject& meta = TextManagerBase::staticMetaObject;
    QCOMPARE(meta.className(), "TextManagerBase");
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("languageReloaded()"));
    QCOMPARE(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Signal);
    QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(),
             QByteArray("reloadLanguage()"));
    QCOMPARE(meta.method(meta.methodOffset() + 1).methodType(), QMetaMethod::Slot);
}

void TextManagerBaseTest::answersTextsAndComments_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("skip");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QString>("comment");
    QTest::addColumn<bool>("commentOk");
    QTest::addColumn<QStringList>("warnings"); // of each of the two look-ups

    const auto row = [](const char* name, const char* url, const char* language, bool skip,
                        const char* answer, bool ok, const char* comment, bool commentOk,
                        const QStringList& warnings = {}) {
        QTest::newRow(name) << url << language << skip << answer << ok << comment << commentOk
                            << warnings;
    };
    row("the wanted language", "All", "fr_FR", false, "fr", true, "c fr", true);
    row("an empty key is the current language, not for comments", "All", "", false, "de", true,
        "c en", true);
    row("an empty key taken as it is", "All", "", true, "en", true, "c en", true);
    row("the first fallback", "NotDe", "de_DE", false, "en", true, "c en", true);
    row("the second fallback", "OnlyPosix", "de_DE", false, "posix", true, "c posix", true);
    row("the second, from the first", "OnlyPosix", "en_US", false, "posix", true, "c posix", true);
    row("from the second to the first", "NotPosix", "POSIX", false, "en", true, "c en", true);
    row("a language that is not loaded", "All", "xx_XX", false, "en", true, "c en", true);
    row("an empty text is none, its comment is one", "EmptyDe", "de_DE", false, "en", true, "c de",
        true);
    row("empty in the language tried last", "EmptyPosix", "de_DE", false, "", true, "", true);
    row("empty, but not in the language tried last", "EmptyEn", "en_US", false, "", false, "",
        false);
    row("nowhere", "No/Where", "de_DE", false, "", false, "", false);
    row("a number falls back, with one warning each", "NumberDe", "de_DE", false, "en", true,
        "c en", true, {QStringLiteral("Invalid data type of jsonValue for url: \"NumberDe/%1\"")});
    row("each language tried warns", "LeafEnPosix/x/y", "en_US", false, "", false, "", false,
        {QStringLiteral("Unable to find jsonObject for url: \"x/y/%1\""),
         QStringLiteral("Unable to find jsonObject for url: \"x/y/%1\"")});
}

void TextManagerBaseTest::answersTextsAndComments()
{
    const LanguageFiles files;
    files.write(deDe, R"({"Content": {
        "All": {"text": "de", "comment": "c de"}, "EmptyDe": {"text": "", "comment": "c de"},
        "NumberDe": {"text": 1, "comment": 2}, "NotPosix": {"text": "de", "comment": "c de"}}})");
    files.write(QStringLiteral("fr_FR"),
                R"({"Content": {"All": {"text": "fr", "comment": "c fr"}}})");
    files.write(enUs, R"({"Content": {
        "All": {"text": "en", "comment": "c en"}, "EmptyDe": {"text": "en", "comment": "c en"},
        "NumberDe": {"text": "en", "comment": "c en"}, "NotDe": {"text": "en", "comment": "c en"},
        "NotPosix": {"text": "en", "comment": "c en"}, "EmptyEn": {"text": "", "comment": ""},
        "LeafEnPosix": {"x": "leaf"}}})");
    files.write(posix, R"({"Content": {
        "All": {"text": "posix", "comment": "c posix"}, "LeafEnPosix": {"x": "leaf"},
        "OnlyPosix": {"text": "posix", "comment": "c posix"},
        "EmptyPosix": {"text": "", "comment": ""}}})");
    const TextManagerBase manager(files.path(), deDe, shortFolder);
    QFETCH(QString, url);
    QFETCH(QString, language);
    QFETCH(bool, skip);
    QFETCH(QString, answer);
    QFETCH(QStringList, warnings);

    WarningCapture capture;
    bool ok = false;
    QCOMPARE(manager.getText(url, ok, language, skip), answer);
    QTEST(ok, "ok");
    QCOMPARE(capture.take(),
             QStringList(warnings).replaceInStrings(QStringLiteral("%1"), QStringLiteral("text")));
    if (!skip)
        QCOMPARE(manager.getText(url, language), answer);

    capture.take();
    QTEST(manager.getComment(url, language, ok), "comment");
    QTEST(ok, "commentOk");
    QCOMPARE(capture.take(), QStringList(warnings).replaceInStrings(QStringLiteral("%1"),
                                                                    QStringLiteral("comment")));
    QTEST(manager.getComment(url, language), "comment");
}

void TextManagerBaseTest::answersShortTexts_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("ok");

    QTest::newRow("a short text") << "A"
                                  << "de_DE"
                                  << "s de" << true;
    QTest::newRow("of the current language") << "A"
                                             << ""
                                             << "s de" << true;
    QTest::newRow("the full text, not ok") << "B"
                                           << "de_DE"
                                           << "full de" << false;
    QTest::newRow("never a short text of another language") << "C"
                                                            << "de_DE"
                                                            << "full de" << false;
    QTest::newRow("the full text of a fallback") << "D"
                                                 << "de_DE"
                                                 << "full en" << false;
    QTest::newRow("an empty short text: the full one, yet ok") << "E"
                                                               << "de_DE"
                                                               << "full de" << true;
    QTest::newRow("neither") << "X"
                             << "de_DE"
                             << "" << false;
}

void TextManagerBaseTest::answersShortTexts()
{
    const LanguageFiles files;
    files.write(deDe, R"({"Content": {"A": {"text": "full de"}, "B": {"text": "full de"},
                                      "C": {"text": "full de"}, "E": {"text": "full de"}}})");
    files.write(enUs, R"({"Content": {"D": {"text": "full en"}}})");
    files.write(QStringLiteral("short/de_DE"),
                R"({"Content": {"A": {"text": "s de"}, "E": {"text": ""}}})");
    files.write(QStringLiteral("short/en_US"),
                R"({"Content": {"C": {"text": "s en"}, "D": {"text": "s en"}}})");
    const TextManagerBase manager(files.path(), deDe, shortFolder);
    QFETCH(QString, url);
    QFETCH(QString, language);

    bool ok = false;
    QTEST(manager.getShortText(url, ok, language), "answer");
    QTEST(ok, "ok");
    QTEST(manager.getShortText(url, language), "answer");
}

void TextManagerBaseTest::answersFromMemory()
{
    QJsonObject object = parseObject(oneText("de"));
    const ReachableTextManager manager(deDe, object);
    QCOMPARE(manager.getAvailableLanguages(), QStringList{deDe});
    QCOMPARE(manager.getLanguageName(), QString());
    QVERIFY(!manager.m_Mutex.isRecursive());

    // The mutex is not recursive: each of these would hang if it took it twice.
    bool ok = true;
    QCOMPARE(manager.getText(QStringLiteral("A"), deDe), QStringLiteral("de"));
    QCOMPARE(manager.getShortText(QStringLiteral("A"), ok, deDe), QStringLiteral("de"));
    QVERIFY(!ok);
    QCOMPARE(manager.getComment(QStringLiteral("A"), deDe), QStringLiteral("of de"));
    QCOMPARE(manager.getAvailableUrls(deDe), QStringList{QStringLiteral("A")});
}

void TextManagerBaseTest::answersHeaders_data()
{
    QTest::addColumn<int>("headerInfo");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QStringList>("warnings");

    const auto warning = [](int value) {
        return QStringList{QStringLiteral("unknown headInfo item : : %1").arg(value)};
    };
    QTest::newRow("language") << 0 << "de_DE"
                              << "German" << QStringList();
    QTest::newRow("sub-language") << 1 << "de_DE"
                                  << "formal" << QStringList();
    QTest::newRow("a field that the file lacks") << 1 << "en_US"
                                                 << "" << QStringList();
    QTest::newRow("no fallback") << 0 << "fr_FR"
                                 << "" << QStringList();
    QTest::newRow("no current language") << 0 << ""
                                         << "" << QStringList();
    QTest::newRow("unknown value") << 2 << "de_DE"
                                   << "" << warning(2);
    QTest::newRow("negative value, language not loaded") << -1 << "fr_FR"
                                                         << "" << warning(-1);
}

void TextManagerBaseTest::answersHeaders()
{
    const LanguageFiles files;
    files.write(deDe, R"({"Header": {"language": "German", "subLanguage": "formal"},
                          "Content": {}})");
    files.write(enUs, R"({"Header": {"language": "English"}, "Content": {}})");
    const TextManagerBase manager(files.path(), deDe, shortFolder);
    QFETCH(int, headerInfo);
    QFETCH(QString, language);

    WarningCapture capture;
    for (const bool ignored : {false, true}) {
        QTEST(manager.getHeaderText(static_cast<HeaderInfo>(headerInfo), language, ignored),
              "answer");
        QTEST(capture.take(), "warnings");
    }
}

void TextManagerBaseTest::answersHeadersAndUrlsOfTheFirstFallback()
{
    const LanguageFiles files;
    const QByteArray content = R"("Content": {"%1": {"text": "", "comment": ""}}})";
    files.write(deDe,
                R"({"Header": {"language": "German"}, )" + QByteArray(content).replace("%1", "D"));
    files.write(posix,
                R"({"Header": {"language": "C"}, )" + QByteArray(content).replace("%1", "P"));
    TextManagerBase manager(files.path(), deDe, shortFolder);
    const QString notLoaded = QStringLiteral("fr_FR");
    using Pair = QPair<QString, QString>;

    WarningCapture capture;
    QCOMPARE(manager.getLanguageHeaderInfo(deDe), Pair(QStringLiteral("German"), QString()));
    QCOMPARE(manager.getAvailableUrls(deDe), QStringList{QStringLiteral("D")});
    QCOMPARE(manager.getLanguageHeaderInfo(notLoaded), Pair());
    QCOMPARE(manager.getAvailableUrls(notLoaded), QStringList());

    files.write(enUs, R"({"Header": {"language": "English", "subLanguage": "US"}, )" +
                          QByteArray(content).replace("%1", "E"));
    manager.reloadLanguage();
    QCOMPARE(manager.getLanguageHeaderInfo(notLoaded),
             Pair(QStringLiteral("English"), QStringLiteral("US")));
    QCOMPARE(manager.getAvailableUrls(QString()), QStringList{QStringLiteral("E")});
    QCOMPARE(capture.take(), QStringList());
}

void TextManagerBaseTest::answersWhileReloading()
{
    const LanguageFiles files;
    files.write(deDe, oneText("de"));
    files.write(QStringLiteral("short/de_DE"), oneText("s"));
    TextManagerBase manager(files.path(), deDe, shortFolder);
    std::atomic<bool> isReloading{true};
    std::atomic<int> wrongAnswers{0};

    const auto ask = [&] {
        while (isReloading) {
            if (manager.getText(QStringLiteral("A"), QString()) != QLatin1String("de") ||
                manager.getShortText(QStringLiteral("A"), QString()) != QLatin1String("s") ||
                manager.getAvailableUrls(deDe).size() != 1)
                ++wrongAnswers;
        }
    };
    std::thread first(ask);
    std::thread second(ask);
    for (int count = 0; count < 50; ++count) {
        files.write(QStringLiteral("new%1").arg(count), oneText("new")); // moves the map's nodes
        manager.reloadLanguage();
    }
    isReloading = false;
    first.join();
    second.join();
    QCOMPARE(wrongAnswers.load(), 0);
}

QTEST_GUILESS_MAIN(TextManagerBaseTest)
#include "tst_text_manager_base.moc"
