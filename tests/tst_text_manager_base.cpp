#include "LanguageFiles.h"
#include "Table.h"
#include "WarningCapture.h"
#include "WatchedMutex.h"

#include "LanguageFallbackHandler.h"
#include "TextManagerBase.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <functional>
#include <future>
#include <mutex>
#include <vector>

#include <sys/stat.h>

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
        "NumberDe": {"text": "en", "comment": "c en"}, "EmptyEn": {"text": "", "comment": ""},
        "NumberEn": {"text": 1, "comment": 2},
        "NotPosix": {"text": "en", "comment": "c en"}}})");
    files.write("POSIX", R"({"Content": {
        "NumPosix": {"text": 1, "comment": 2},
        "All": {"text": "posix", "comment": "c posix"}, "EmptyPosix": {"text": "", "comment": ""},
        "OnlyPosix": {"text": "posix", "comment": "c posix"}}})");
    files.write("short/de_DE", R"({"Content": {"All": {"text": "s"}, "NotPosix": {"text": ""}}})");
    for (const char* name : {"short/fr_FR", "short/en_US"})
        files.write(name, R"({"Content": {"EmptyDe": {"text": "s"}}})");
}

/** Reaches what is kept for subclasses. */
class ReachableTextManager : public TextManagerBase
{
public:
    using TextManagerBase::m_Mutex;
    using TextManagerBase::TextManagerBase;

    bool isLockFree() { return std::unique_lock(m_Mutex, std::try_to_lock).owns_lock(); }
    /** As subclasses do that reach the maps. */
    QStringList languagesUnderLock() const
    {
        const QMutexLocker locker(&m_Mutex);
        return m_LanguageMap.keys();
    }
};

} // namespace

class TextManagerBaseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadsFolders_data();
    void loadsFolders();
    void loadsFilesInOrder();
    void loadsTheCurrentDirectoryInPlaceOfAnEmptyFolder();
    void derivesNames();
    void keepsLanguagesAcrossReloads_data();
    void keepsLanguagesAcrossReloads();
    void announcesReloadsWithoutTheLock();
    void takesTheLock();
    void answersTexts_data();
    void answersTexts();
    void answersFromMemory();
    void answersHeaders();
    void answersWhileReloading();
    void choosesALanguage_data();
    void choosesALanguage();
};

void TextManagerBaseTest::loadsFolders_data()
{
    addTable(R"(
        case                          | file           | content         | language | assigned | warnings
        key to the first dot, any type | de_DE.v2.json  | {"Content": 1}  | de_DE    | 1        | 0
        another extension             | notes.txt      | {"Content": {}} |          | 1        | 0
        no dot, and in another case   | xJSON          | {"Content": {}} | xJSON    | 1        | 0
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
    QCOMPARE(mkfifo(qPrintable(files.file("a_fifo")), 0600), 0); // opened, it would wait for ever
    QVERIFY(QFile::link("a_fifo.json", files.file("a_link")));
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

void TextManagerBaseTest::loadsFilesInOrder()
{
    const LanguageFiles files;
    for (const char* name : {"de_DE.a", "de_DE.B"}) // the later one, whatever its case, is kept
        files.write(name, oneText(name));
    for (const char* name : {"short/a", "b"})
        files.write(name, "{}");

    WarningCapture capture;
    const TextManagerBase manager(files.path(), "de_DE", "short");
    QCOMPARE(manager.getText("A", "de_DE"), "de_DE.B");
    QCOMPARE(capture.take().join(' '), // full texts come first
             files.fill("No 'Content'-key found in language file: \"DIR/b.json\" "
                        "No 'Content'-key found in language file: \"DIR/short/a.json\""));
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
    QCOMPARE(bare.getShortLanguageFileNameFromLanguageName("fr_FR"), QString());
}

void TextManagerBaseTest::keepsLanguagesAcrossReloads_data()
{
    addTable(R"(
        case                     | new content                         | text
        a line break in a string | {"Content": {"A": {"text": "new\r\nline"}}} | new\nline
        the text is gone from it | {"Content": {}}                     |
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
        isLockFree = std::async(std::launch::async, [&] { return manager.isLockFree(); }).get();
    });

    manager.reloadLanguage(); // no file at all, announced all the same
    QCOMPARE(reloads.count(), 1);
    QVERIFY(isLockFree);
}

void TextManagerBaseTest::takesTheLock()
{
    ReachableTextManager manager("/nowhere/", "de_DE", "short");
    bool ok = false;
    QJsonObject object;
    const std::vector<std::function<void()>> locked = {
        [&] { manager.loadLanguages(); },
        [&] { manager.reloadLanguage(); },
        [&] { manager.loadAndParseFromJson("/nowhere/de_DE.json", object); },
        [&] { manager.getAvailableLanguages(); },
        [&] { manager.getText("A", ok, "de_DE", true); },
        [&] { manager.getText("A", "de_DE"); },
        [&] { manager.getAnsweringLanguage("A", "de_DE"); },
        [&] { manager.getShortText("A", ok, "de_DE"); },
        [&] { manager.getShortText("A", "de_DE"); },
        [&] { manager.getHeaderText(TextManagerDefinitions::Language, "de_DE", true); },
        [&] { manager.getLanguageHeaderInfo("de_DE"); },
        [&] { manager.getAvailableUrls("de_DE"); },
    };
    const auto unlocked = [&] {
        manager.getComment("A", "de_DE", ok);
        manager.getComment("A", "de_DE");
        manager.getDynamicText("A", "de_DE");
        manager.getLanguageFileNameFromLanguageName(manager.selectSuitableLanguageKey(""));
        manager.getShortLanguageFileNameFromLanguageName(manager.getLanguageName());
    };

    for (std::size_t i = 0; i < locked.size(); ++i)
        QVERIFY2(countLocks(manager.m_Mutex, locked[i]) > 0,
                 qPrintable(QString("operation %1 takes no lock").arg(i)));
    const WarningCapture capture;
    QCOMPARE(countLocks(manager.m_Mutex, unlocked), 0);
}

void TextManagerBaseTest::answersTexts_data()
{
    // "key" says whether an empty language key is taken as it is; else it stands for the current
    // language. Each answer is followed by the flag that comes with it.
    addTable(R"(
        case                          | url        | language | key   | text     | from  | short    | comment    | warns
        the wanted language           | All        | fr_FR    |       | fr, 1    | fr_FR | fr, 0    | c fr, 1    |
        empty key, not for comments   | All        |          |       | de, 1    | de_DE | s, 1     | c en, 1    |
        empty key taken as it is      | All        |          | as is | en, 1    | de_DE | s, 1     | c en, 1    |
        the second fallback           | OnlyPosix  | de_DE    |       | posix, 1 | POSIX | posix, 0 | c posix, 1 |
        from the second to the first  | NotPosix   | POSIX    |       | en, 1    | en_US | en, 0    | c en, 1    |
        a language that is not loaded | All        | xx_XX    | as is | en, 1    | en_US | en, 0    | c en, 1    |
        an empty text falls back      | EmptyDe    | de_DE    |       | en, 1    | en_US | en, 0    | c de, 1    |
        empty in the one tried last   | EmptyPosix | de_DE    |       | , 1      |       | , 0      | , 1        |
        empty, but not in the last    | EmptyEn    | en_US    |       | , 0      |       | , 0      | , 0        |
        an empty short text           | NotPosix   | de_DE    |       | de, 1    | de_DE | de, 1    | c de, 1    |
        nowhere                       | No/Where   | de_DE    |       | , 0      |       | , 0      | , 0        |
        a number falls back and warns | NumberDe   | de_DE    |       | en, 1    | en_US | en, 0    | c en, 1    | yes
        not asked twice: en_US        | NumberEn   | en_US    |       | , 0      |       | , 0      | , 0        | yes
        not asked twice: POSIX        | NumPosix   | POSIX    |       | , 0      |       | , 0      | , 0        | yes
    )");
}

void TextManagerBaseTest::answersTexts()
{
    const LanguageFiles files;
    writeLanguages(files);
    const TextManagerBase manager(files.path(), "de_DE", "short");
    const QString url = cell("url");
    const QString language = cell("language");
    bool ok = false;
    const auto withFlag = [&ok](const QString& text) { return text + (ok ? ", 1" : ", 0"); };
    const QString warning = "Invalid data type of jsonValue for url: \"" + url + '/';
    const auto warnings = [&](const QString& member) {
        return cell("warns").isEmpty() ? QStringList() : QStringList{warning + member + '"'};
    };

    WarningCapture capture;
    QCOMPARE(withFlag(manager.getText(url, ok, language, cell("key") == "as is")), cell("text"));
    QCOMPARE(capture.take(), warnings("text"));
    QCOMPARE(manager.getAnsweringLanguage(url, language), cell("from"));
    QCOMPARE(capture.take(), warnings("text"));
    QCOMPARE(withFlag(manager.getShortText(url, ok, language)), cell("short"));
    QCOMPARE(manager.getShortText(url, language), cell("short").section(',', 0, 0));
    QCOMPARE(capture.take(), warnings("text") + warnings("text"));
    QCOMPARE(withFlag(manager.getComment(url, language, ok)), cell("comment"));
    QCOMPARE(capture.take(), warnings("comment"));
}

void TextManagerBaseTest::answersFromMemory()
{
    QJsonObject object = parseObject(oneText("de"));
    const ReachableTextManager manager("de_DE", object);
    QCOMPARE(manager.getAvailableLanguages(), QStringList{"de_DE"});
    QCOMPARE(manager.getLanguageName(), QString());
    QCOMPARE(manager.languagesUnderLock(), QStringList{"de_DE"});
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QVERIFY(!manager.m_Mutex.isRecursive());
#endif
    bool ok = true; // the next call would hang if it took the mutex twice
    QCOMPARE(manager.getShortText("A", ok, "de_DE"), "de");
    QVERIFY(!ok);
}

void TextManagerBaseTest::answersHeaders()
{
    const LanguageFiles files;
    writeLanguages(files);
    const TextManagerBase manager(files.path(), "de_DE", "short");
    const auto headerText = [&](int headerInfo, const QString& language) {
        const auto value = static_cast<TextManagerDefinitions::HeaderInfo>(headerInfo);
        return manager.getHeaderText(value, language, true);
    };
    WarningCapture capture;
    QCOMPARE(headerText(TextManagerDefinitions::Language, "de_DE"), "German");
    QCOMPARE(headerText(TextManagerDefinitions::SubLanguage, "de_DE"), "formal");
    QCOMPARE(headerText(TextManagerDefinitions::Language, ""), QString()); // not the current one
    QCOMPARE(capture.take(), QStringList());
    QCOMPARE(headerText(-1, "xx_XX"), QString());
    QCOMPARE(capture.take(), QStringList("unknown headInfo item : : -1"));
    QCOMPARE(manager.getLanguageHeaderInfo("de_DE"),
             qMakePair(QString("German"), QString("formal")));
    QCOMPARE(manager.getLanguageHeaderInfo(""), qMakePair(QString("English"), QString()));
    QCOMPARE(manager.getAvailableUrls(""),
             QStringList({"All", "EmptyDe", "EmptyEn", "NotPosix", "NumberDe"}));

    QJsonObject document = parseObject(R"({"Header": {"language": "English"},
        "Content": {"A": {"text": "en", "comment": "c en"}}})");
    const TextManagerBase onlyPosix("POSIX", document); // which is never asked in another's place
    QCOMPARE(onlyPosix.getLanguageHeaderInfo("en_US"), qMakePair(QString(), QString()));
    QCOMPARE(onlyPosix.getAvailableUrls("en_US"), QStringList());
}

void TextManagerBaseTest::answersWhileReloading()
{
    const LanguageFiles files;
    files.write("de_DE", oneText("de"));
    files.write("short/de_DE", oneText("s"));
    TextManagerBase manager(files.path(), "de_DE", "short");
    std::atomic<bool> isReloading{true};
    const auto countWrongAnswers = [&] {
        int wrong = 0;
        bool ok = false;
        while (isReloading) {
            if (manager.getText("A", QString()) != "de" ||
                manager.getText("A", ok, QString(), false) != "de" ||
                manager.getShortText("A", ok, QString()) != "s" ||
                !manager.getAvailableUrls("de_DE").isEmpty())
                ++wrong;
        }
        return wrong;
    };
    auto first = std::async(std::launch::async, countWrongAnswers);
    auto second = std::async(std::launch::async, countWrongAnswers);
    for (int count = 0; count < 50; ++count) {
        files.write(QString("new%1").arg(count), oneText("new")); // moves the map's nodes
        manager.reloadLanguage();
    }
    isReloading = false;
    QCOMPARE(first.get() + second.get(), 0);
}

void TextManagerBaseTest::choosesALanguage_data()
{
    addTable(R"(
        case                                | available         | wanted | chosen | named in the warning
        the wanted one                      | de_DE en_US       | de_DE  | de_DE  |
        the first fallback: case matters    | POSIX en_US       | en_us  | en_US  |
        the second: no part of a key counts | de_DE POSIX       | de     | POSIX  |
        none                                | de_DE fr_FR       | it     |        | ("de_DE", "fr_FR")
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
