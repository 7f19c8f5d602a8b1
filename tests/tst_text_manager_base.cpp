#include "LanguageFiles.h"
#include "Table.h"
#include "WarningCapture.h"

#include "LanguageFallbackHandler.h"
#include "TextManagerBase.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <thread>

namespace
{

/** A language document with one node, A, whose text is @p text. */
QByteArray oneText(const QByteArray& text)
{
    return R"({"Content": {"A": {"text": ")" + text + R"("}}})";
}

/** Languages in which each text is found elsewhere. */
void writeLanguages(const LanguageFiles& files)
{
    files.write("de_DE", R"({"Header": {"language": "German", "subLanguage": "formal"}, "Content": {
        "All": {"text": "de", "comment": "c de"}, "EmptyDe": {"text": "", "comment": "c de"},
        "NumberDe": {"text": 1, "comment": 2}, "NotPosix": {"text": "de", "comment": "c de"}}})");
    files.write("fr_FR", R"({"Content": {"All": {"text": "fr", "comment": "c fr"}}})");
    files.write("en_US", R"({"Header": {"language": "English"}, "Content": {
        "All": {"text": "en", "comment": "c en"}, "EmptyDe": {"text": "en", "comment": "c en"},
        "NumberDe": {"text": "en", "comment": "c en"}, "NotDe": {"text": "en", "comment": "c en"},
        "NotPosix": {"text": "en", "comment": "c en"}, "EmptyEn": {"text": "", "comment": ""}}})");
    files.write("POSIX", R"({"Content": {
        "All": {"text": "posix", "comment": "c posix"}, "EmptyPosix": {"text": "", "comment": ""},
        "OnlyPosix": {"text": "posix", "comment": "c posix"}}})");
    files.write("short/de_DE", R"({"Content": {"All": {"text": "s"}, "NotPosix": {"text": ""}}})");
    files.write("short/fr_FR",
                R"({"Content": {"NotDe": {"text": "s"}, "EmptyDe": {"text": "s"}}})");
    files.write("short/en_US",
                R"({"Content": {"NotDe": {"text": "s"}, "EmptyDe": {"text": "s"}}})");
}

/** Reaches what is kept for subclasses. */
class ReachableTextManager : public TextManagerBase
{
public:
    using TextManagerBase::m_Mutex;
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
    void derivesNames();
    void keepsLanguagesAcrossReloads_data();
    void keepsLanguagesAcrossReloads();
    void announcesReloadsWithoutTheLock();
    void answersTexts_data();
    void answersTexts();
    void answersShortTexts_data();
    void answersShortTexts();
    void answersFromMemory();
    void answersHeaders_data();
    void answersHeaders();
    void answersWhileReloading();
    void choosesALanguage_data();
    void choosesALanguage();
};

void TextManagerBaseTest::loadsFolders_data()
{
    addTable(R"(
        case                          | file           | content         | language | assigned | warnings
        by extension                  | de_DE.json     | {"Content": {}} | de_DE    | 1        | 0
        another extension             | notes.txt      | {"Content": {}} |          | 1        | 0
        no dot before the extension   | xjson          | {"Content": {}} | xjson    | 1        | 0
        whatever the extension's case | AT.JSON        | {"Content": {}} | AT       | 1        | 0
        the key ends at the first dot | de_DE.v2.json  | {"Content": {}} | de_DE    | 1        | 0
        content of any type           | de_DE.json     | {"Content": 1}  | de_DE    | 1        | 0
        half written                  | de_DE.json     | {"Content": {}  |          | 0        | 0
        no content                    | de_DE.json     | {"Header": {}}  |          | 1        | 1
        an array                      | de_DE.json     | [1]             |          | 1        | 1
    )");
}

void TextManagerBaseTest::loadsFolders()
{
    const LanguageFiles files;
    const QString path = files.path() + cell("file");
    QVERIFY(QDir(files.path()).mkdir("a_folder.json"));
    files.writePath(path, cell("content").toUtf8());
    QStringList warnings;
    if (cell("warnings") == "1")
        warnings << "No 'Content'-key found in language file: \"" + path + '"';

    WarningCapture capture;
    TextManagerBase manager(files.path(), "de_DE", "short");
    QCOMPARE(manager.getAvailableLanguages().join(' '), cell("language"));
    QCOMPARE(capture.take(), warnings);

    QJsonObject object{{"untouched", true}};
    manager.loadAndParseFromJson(path, object);
    QCOMPARE(object.contains("untouched"), cell("assigned") == "0");
    QCOMPARE(capture.take(), warnings);
}

void TextManagerBaseTest::loadsTheCurrentDirectoryInPlaceOfAnEmptyFolder()
{
    const LanguageFiles current;
    current.write("de_DE", oneText("current"));
    const QString previous = QDir::currentPath();
    QDir::setCurrent(current.path());
    const TextManagerBase withoutShortFolder("/nowhere/", "de_DE", QString());
    TextManagerBase withoutFolder(QString(), "de_DE", "short");
    const QStringList before = withoutFolder.getAvailableLanguages();
    withoutFolder.reloadLanguage();
    QDir::setCurrent(previous);

    QCOMPARE(withoutShortFolder.getShortText("A", "de_DE"), "current");
    QCOMPARE(before, QStringList());
    QCOMPARE(withoutFolder.getText("A", "de_DE"), "current");
}

void TextManagerBaseTest::derivesNames()
{
    const TextManagerBase full("/data/lang", "de_DE", "short");
    QCOMPARE(full.getLanguageFileNameFromLanguageName("fr_FR"), "/data/langfr_FR.json");
    QCOMPARE(full.getShortLanguageFileNameFromLanguageName("fr_FR"), "/data/langshort/fr_FR.json");
    const TextManagerBase bare("/data/lang/", "de_DE", QString());
    QCOMPARE(bare.getShortLanguageFilepath(), QString());
    QCOMPARE(bare.getShortLanguageFileNameFromLanguageName("fr_FR"), QString());
    QCOMPARE(TextManagerBase::extractLanguageFromTextUrl("a/b/"), QString());
}

void TextManagerBaseTest::keepsLanguagesAcrossReloads_data()
{
    addTable(R"(
        case                     | new content                         | text
        changed                  | {"Content": {"A": {"text": "new"}}} | new
        a line break in a string | {"Content": {"A": {"text": "new\r\nline"}}} | new\nline
        the text is gone from it | {"Content": {}}                     |
        half written             | {"Content": {"A": {"text            | old
        truncated to nothing     |                                     | old
        no content               | {}                                  | old
        removed                  | REMOVED                             | old
    )");
}

void TextManagerBaseTest::keepsLanguagesAcrossReloads()
{
    const LanguageFiles files;
    files.write("de_DE", oneText("old"));
    files.write("short/de_DE", oneText("old"));
    TextManagerBase manager(files.path(), "de_DE", "short");
    for (const char* name : {"de_DE", "short/de_DE"}) {
        files.write(name, cell("new content").toUtf8());
        if (cell("new content") == "REMOVED")
            files.remove(name);
    }

    WarningCapture capture;
    manager.reloadLanguage();
    QCOMPARE(manager.getText("A", "de_DE"), cell("text"));
    QCOMPARE(manager.getShortText("A", "de_DE"), cell("text"));
    QCOMPARE(manager.getAvailableLanguages(), QStringList{"de_DE"});
}

void TextManagerBaseTest::announcesReloadsWithoutTheLock()
{
    const LanguageFiles files;
    ReachableTextManager manager(files.path(), "de_DE", "short");
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

void TextManagerBaseTest::answersTexts_data()
{
    // "key" says how the language key is taken: as the current language when empty, or as it is.
    addTable(R"(
        case                             | url        | language | key     | text  | ok | comment | comment ok | warned URL
        the wanted language              | All        | fr_FR    | current | fr    | 1  | c fr    | 1          |
        empty key, not for comments      | All        |          | current | de    | 1  | c en    | 1          |
        empty key taken as it is         | All        |          | as is   | en    | 1  | c en    | 1          |
        the first fallback               | NotDe      | de_DE    | current | en    | 1  | c en    | 1          |
        the second fallback              | OnlyPosix  | de_DE    | current | posix | 1  | c posix | 1          |
        from the first to the second     | OnlyPosix  | en_US    | current | posix | 1  | c posix | 1          |
        from the second to the first     | NotPosix   | POSIX    | current | en    | 1  | c en    | 1          |
        a language that is not loaded    | All        | xx_XX    | as is   | en    | 1  | c en    | 1          |
        an empty text falls back         | EmptyDe    | de_DE    | current | en    | 1  | c de    | 1          |
        empty in the language tried last | EmptyPosix | de_DE    | current |       | 1  |         | 1          |
        empty, but not in the last       | EmptyEn    | en_US    | current |       | 0  |         | 0          |
        nowhere                          | No/Where   | de_DE    | current |       | 0  |         | 0          |
        a number falls back and warns    | NumberDe   | de_DE    | current | en    | 1  | c en    | 1          | "NumberDe/
    )");
}

void TextManagerBaseTest::answersTexts()
{
    const LanguageFiles files;
    writeLanguages(files);
    const TextManagerBase manager(files.path(), "de_DE", "short");
    const QString warning = "Invalid data type of jsonValue for url: " + cell("warned URL");
    const auto warnings = [&](const QString& member) {
        return cell("warned URL").isEmpty() ? QStringList() : QStringList{warning + member + '"'};
    };

    WarningCapture capture;
    bool ok = false;
    QCOMPARE(manager.getText(cell("url"), ok, cell("language"), cell("key") == "as is"),
             cell("text"));
    QCOMPARE(ok, cell("ok") == "1");
    QCOMPARE(capture.take(), warnings("text"));
    QCOMPARE(manager.getComment(cell("url"), cell("language"), ok), cell("comment"));
    QCOMPARE(ok, cell("comment ok") == "1");
    QCOMPARE(capture.take(), warnings("comment"));
}

void TextManagerBaseTest::answersShortTexts_data()
{
    addTable(R"(
        case                                   | url       | language | answer | ok
        a short text                           | All       | de_DE    | s      | 1
        of the current language                | All       |          | s      | 1
        the full text, not ok                  | All       | fr_FR    | fr     | 0
        never a short text of another language | NotDe     | de_DE    | en     | 0
        the full text of a fallback            | OnlyPosix | de_DE    | posix  | 0
        an empty short text: full, and yet ok  | NotPosix  | de_DE    | de     | 1
        neither                                | No        | de_DE    |        | 0
    )");
}

void TextManagerBaseTest::answersShortTexts()
{
    const LanguageFiles files;
    writeLanguages(files);
    const TextManagerBase manager(files.path(), "de_DE", "short");
    bool ok = false;
    QCOMPARE(manager.getShortText(cell("url"), ok, cell("language")), cell("answer"));
    QCOMPARE(ok, cell("ok") == "1");
    QCOMPARE(manager.getShortText(cell("url"), cell("language")), cell("answer"));
}

void TextManagerBaseTest::answersFromMemory()
{
    QJsonObject object = parseObject(oneText("de"));
    const ReachableTextManager manager("de_DE", object);
    QCOMPARE(manager.getAvailableLanguages(), QStringList{"de_DE"});
    QCOMPARE(manager.getLanguageName(), QString());
    QVERIFY(!manager.m_Mutex.isRecursive());
    bool ok = true; // the next call would hang if it took the mutex twice
    QCOMPARE(manager.getShortText("A", ok, "de_DE"), "de");
    QVERIFY(!ok);
}

void TextManagerBaseTest::answersHeaders_data()
{
    addTable(R"(
        case                        | value | language | text   | warning                     | header
        language                    | 0     | de_DE    | German |                             | German, formal
        sub-language                | 1     | de_DE    | formal |                             | German, formal
        a field that the file lacks | 1     | en_US    |        |                             | English,
        no fallback, or the first   | 0     | xx_XX    |        |                             | English,
        no current language         | 0     |          |        |                             | English,
        unknown value               | 2     | de_DE    |        | unknown headInfo item : : 2 | German, formal
        unknown value and language  | -1    | xx_XX    |        | unknown headInfo item : : -1 | English,
    )");
}

void TextManagerBaseTest::answersHeaders()
{
    const LanguageFiles files;
    writeLanguages(files);
    const TextManagerBase manager(files.path(), "de_DE", "short");
    const auto headerInfo = static_cast<TextManagerDefinitions::HeaderInfo>(cell("value").toInt());

    WarningCapture capture;
    QCOMPARE(manager.getHeaderText(headerInfo, cell("language"), true), cell("text"));
    QCOMPARE(capture.take().join('\n'), cell("warning"));
    const auto info = manager.getLanguageHeaderInfo(cell("language"));
    QCOMPARE((info.first + ", " + info.second).trimmed(), cell("header"));
}

void TextManagerBaseTest::answersWhileReloading()
{
    const LanguageFiles files;
    files.write("de_DE", oneText("de"));
    files.write("short/de_DE", oneText("s"));
    TextManagerBase manager(files.path(), "de_DE", "short");
    std::atomic<bool> isReloading{true};
    std::atomic<int> wrongAnswers{0};
    const auto ask = [&] {
        while (isReloading) {
            if (manager.getText("A", QString()) != "de" ||
                manager.getShortText("A", QString()) != "s" ||
                !manager.getAvailableUrls("de_DE").isEmpty())
                ++wrongAnswers;
        }
    };
    std::thread first(ask);
    std::thread second(ask);
    for (int count = 0; count < 50; ++count) {
        files.write(QString("new%1").arg(count), oneText("new")); // moves the map's nodes
        manager.reloadLanguage();
    }
    isReloading = false;
    first.join();
    second.join();
    QCOMPARE(wrongAnswers.load(), 0);
}

void TextManagerBaseTest::choosesALanguage_data()
{
    addTable(R"(
        case                     | available         | wanted | chosen | named in the warning
        the wanted one           | de_DE en_US       | de_DE  | de_DE  |
        the first fallback       | POSIX de_DE en_US | fr_FR  | en_US  |
        the second fallback      | de_DE POSIX       | fr_FR  | POSIX  |
        case matters             | en_US POSIX       | en_us  | en_US  |
        no part of a key matches | de_DE fr_FR       | de     |        | ("de_DE", "fr_FR")
        nothing available        |                   |        |        | ()
    )");
}

void TextManagerBaseTest::choosesALanguage()
{
    const QString named = cell("named in the warning");
    LanguageFallbackHandler handler({"replaced"});
    handler.setLanguageKeyList(cell("available").split(' ', Qt::SkipEmptyParts));
    WarningCapture capture;
    QCOMPARE(handler.getResultingLanguageKey(cell("wanted")), cell("chosen"));
    const QString warning = "Cannot find any fallback language in language key list: %1 !";
    QCOMPARE(capture.take().join('\n'), named.isEmpty() ? QString() : warning.arg(named));
}

QTEST_GUILESS_MAIN(TextManagerBaseTest)
#include "tst_text_manager_base.moc"
