#include "OpenTextManager.h"
#include "Table.h"
#include "WatchedMutex.h"

#include "LanguageFallbackHandler.h"

#include <QDir>
#include <QSignalSpy>

#include <functional>
#include <future>
#include <mutex>
#include <vector>

namespace
{

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

} // namespace

class TextManagerBaseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadsFolders_data()
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
    void loadsFolders()
    {
        const LanguageFiles files;
        const QString path = files.path() + cell("file");
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

    void loadsFilesInOrder()
    {
        const LanguageFiles files;
        for (const char* name : {"de_DE.a", "de_DE.B"}) // the later one, whatever its case, is kept
            files.writeText(name, name);
        for (const char* name : {"short/a", "b"})
            files.write(name, "{}");

        WarningCapture capture;
        const TextManagerBase manager(files.path(), "de_DE", "short");
        QCOMPARE(manager.getText("A", "de_DE"), "de_DE.B");
        QCOMPARE(capture.take().join(' '), // full texts come first
                 files.fill("No 'Content'-key found in language file: \"DIR/b.json\" "
                            "No 'Content'-key found in language file: \"DIR/short/a.json\""));
    }

    void loadsTheCurrentDirectoryInPlaceOfAnEmptyFolder()
    {
        const LanguageFiles current;
        current.writeText("de_DE", "current");
        QVERIFY(QDir::setCurrent(current.path()));
        const TextManagerBase withoutShortFolder("/nowhere/", "de_DE", QString());
        QCOMPARE(withoutShortFolder.getShortText("A", "de_DE"), "current");
        TextManagerBase withoutFolder(QString(), "de_DE", "short");
        QCOMPARE(withoutFolder.getAvailableLanguages(), QStringList());
        withoutFolder.reloadLanguage();
        QCOMPARE(withoutFolder.getText("A", "de_DE"), "current");
    }

    void derivesNames()
    {
        const TextManagerBase full("/data/lang", "de_DE", "short");
        QCOMPARE(full.getLanguageFileNameFromLanguageName("fr_FR"), "/data/langfr_FR.json");
        QCOMPARE(full.getShortLanguageFileNameFromLanguageName("fr_FR"),
                 "/data/langshort/fr_FR.json");
        const TextManagerBase bare("/data/lang/", "de_DE", QString());
        QCOMPARE(bare.getShortLanguageFileNameFromLanguageName("fr_FR"), QString());
    }

    void keepsLanguagesAcrossReloads_data()
    {
        addTable(R"(
        case                     | new content                         | text
        a line break in a string | {"Content": {"A": {"text": "new\r\nline"}}} | new\nline
        the text is gone from it | {"Content": {}}                     |
        no content               | {}                                  | old
        half written             | {"Content": {"A": {"text": "new"}   | old
        empty                    |                                     | old
        )");
    }
    void keepsLanguagesAcrossReloads()
    {
        const LanguageFiles files;
        files.writeText("de_DE", "old");
        files.writeText("short/de_DE", "old");
        TextManagerBase manager(files.path(), "de_DE", "short");
        for (const char* name : {"de_DE", "short/de_DE"})
            files.write(name, cell("new content").toUtf8());
        WarningCapture capture;
        manager.reloadLanguage();
        QCOMPARE(manager.getText("A", "de_DE"), cell("text"));
        QCOMPARE(manager.getShortText("A", "de_DE"), cell("text"));
        QCOMPARE(manager.getAvailableLanguages(), QStringList{"de_DE"});
    }

    void announcesReloadsWithoutTheLock()
    {
        const LanguageFiles files;
        OpenTextManager manager(files.path(), "de_DE", "short");
        QSignalSpy reloads(&manager, &TextManagerBase::languageReloaded);
        bool isLockFree = false;
        const auto tryLock = [&] {
            isLockFree = std::unique_lock(manager.m_Mutex, std::try_to_lock).owns_lock();
        };
        connect(&manager, &TextManagerBase::languageReloaded, &manager, [&] {
            // From another thread: the mutex is recursive, this one could take it anyway.
            std::async(std::launch::async, tryLock).get();
        });

        manager.reloadLanguage(); // no file at all, announced all the same
        QCOMPARE(reloads.count(), 1);
        QVERIFY(isLockFree);
    }

    void takesTheLock()
    {
        OpenTextManager manager("/nowhere/", "de_DE", "short");
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

    void answersTexts_data()
    {
        // "key" says whether an empty language key is taken as it is; else it stands for the
        // current language. Each answer is followed by the flag that comes with it.
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
    void answersTexts()
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
        QCOMPARE(withFlag(manager.getText(url, ok, language, cell("key") == "as is")),
                 cell("text"));
        QCOMPARE(capture.take(), warnings("text"));
        QCOMPARE(manager.getAnsweringLanguage(url, language), cell("from"));
        QCOMPARE(capture.take(), warnings("text"));
        QCOMPARE(withFlag(manager.getShortText(url, ok, language)), cell("short"));
        QCOMPARE(manager.getShortText(url, language), cell("short").section(',', 0, 0));
        QCOMPARE(capture.take(), warnings("text") + warnings("text"));
        QCOMPARE(withFlag(manager.getComment(url, language, ok)), cell("comment"));
        QCOMPARE(capture.take(), warnings("comment"));
    }

    void answersFromMemory()
    {
        QJsonObject object = parseObject(R"({"Content": {"A": {"text": "de"}}})");
        const OpenTextManager manager("de_DE", object);
        QCOMPARE(manager.getAvailableLanguages(), QStringList{"de_DE"});
        QCOMPARE(manager.getLanguageName(), QString());
        bool ok = true; // the next call would hang if it took the mutex twice
        QCOMPARE(manager.getShortText("A", ok, "de_DE"), "de");
        QVERIFY(!ok);
        const QMutexLocker locker(&manager.m_Mutex); // as subclasses do that reach the maps
        QCOMPARE(manager.m_LanguageMap.keys(), QStringList{"de_DE"});
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        QVERIFY(!manager.m_Mutex.isRecursive());
#endif
    }

    void answersHeaders()
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
        QCOMPARE(headerText(TextManagerDefinitions::Language, ""),
                 QString()); // not the current one
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
        const TextManagerBase onlyPosix("POSIX", document); // never asked in another's place
        QCOMPARE(onlyPosix.getLanguageHeaderInfo("en_US"), qMakePair(QString(), QString()));
        QCOMPARE(onlyPosix.getAvailableUrls("en_US"), QStringList());
    }

    void choosesALanguage_data()
    {
        addTable(R"(
        case                                | available         | wanted | chosen | named in the warning
        the wanted one                      | de_DE en_US       | de_DE  | de_DE  |
        the first fallback: case matters    | POSIX en_US       | en_us  | en_US  |
        the second: no part of a key counts | de_DE POSIX       | de     | POSIX  |
        none                                | de_DE fr_FR       | it     |        | ("de_DE", "fr_FR")
        )");
    }
    void choosesALanguage()
    {
        const QString named = cell("named in the warning");
        LanguageFallbackHandler handler({"replaced"});
        handler.setLanguageKeyList(cell("available").split(' ', Qt::SkipEmptyParts));
        WarningCapture capture;
        QCOMPARE(handler.getResultingLanguageKey(cell("wanted")), cell("chosen"));
        const QString warning = "Cannot find any fallback language in language key list: %1 !";
        QCOMPARE(capture.take().join('\n'), named.isEmpty() ? QString() : warning.arg(named));
    }
};

QTEST_GUILESS_MAIN(TextManagerBaseTest)
#include "tst_text_manager_base.moc"
