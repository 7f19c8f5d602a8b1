#pragma once

#include "DynamicTextHandler.h"
#include "TextManagerDefinitions.h"
#include "TextManagerLibraryExport.h"

#include <QJsonObject>
#include <QMap>
#include <QMutex>
#include <QObject>
#include <QPair>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class AnswerMemory;
class DynamicTextReaderInterface;
class LookUpDocuments;
class TextManagerMemory;
struct LookUpAnswer;

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
using TextManagerMutex = QMutex;
#else
/** The type of a text manager's mutex, with Qt 5 a QMutex. In Qt 6 that is never recursive; this
 * one always is, also that of a text manager built in memory. Both are locked alike: `QMutexLocker
 * locker(&m_Mutex)`. */
using TextManagerMutex = QRecursiveMutex;
#endif

/**
 * Loads the language files of one folder and answers look-ups of texts, short texts and comments by
 * text URL; dynamic texts, which are in no file, it reads through a reader of the application.
 *
 * **Beware.** A folder that is not there is no error and no warning: every text is then empty. A
 * folder without its trailing "/" loads all the same, except that the short texts, whose path is
 * put together with nothing in between, are lost without a word. getAvailableLanguages() tells
 * what was loaded.
 *
 * A language's key is the base name of its file: `de_DE` for `de_DE.json`. Where an operation
 * speaks of fallback, it tries, and takes the first text that is not empty:
 *
 * 1. the wanted language,
 * 2. "en_US", unless that was the wanted one,
 * 3. "POSIX", unless that was the wanted one.
 *
 * **Threads.** One mutex guards the loaded documents, so that look-ups and reloads may come from
 * any thread, except where an operation says that it takes no lock. Of these, getComment() reads
 * the documents: beside a reload in another thread it may crash. languageReloaded() is emitted in
 * the thread that calls reloadLanguage(), after the mutex has been released.
 *
 * **Speed.** Answers are remembered: a text that is asked for again costs one probe of a hash. What
 * a look-up warns of, it warns of each time. A reload does not open a file again that is proved
 * unchanged, nor parse one whose bytes are those of a file that was parsed. None of this can be
 * told from outside, not even by a subclass: it reads and changes the maps, under the mutex, as
 * plain members, and a reference or an iterator into them stays valid whatever is looked up.
 *
 * **Ownership.** The object owns what it loaded, and its handler of dynamic texts, but not the
 * reader that the handler is given. It has no QObject parent.
 */
class TEXTMANAGERLIBRARY_EXPORT TextManagerBase : public QObject
{
    Q_OBJECT

    const std::unique_ptr<TextManagerMemory> m_Memory; // guarded by m_Mutex

public:
    /**
     * Loads every language file of @p languagePath and, from its sub-folder
     * @p shortLanguageFolder, the files of short texts.
     *
     * @param languagePath the language folder. File names are appended to it as they are, so give
     * it a trailing "/". Empty: nothing is loaded before the first reloadLanguage().
     * @param languageName key of the current language.
     * @param shortLanguageFolder the sub-folder's name, relative to the language folder. Empty:
     * there are no short texts; the loading then lists the process's current directory in its
     * place, deliberately and unguarded.
     */
    TextManagerBase(const QString& languagePath, const QString& languageName,
                    const QString& shortLanguageFolder);

    /**
     * A text manager over one language document that the caller has parsed, stored under the key
     * @p languageName. Nothing is read and the document is not checked.
     *
     * Deliberately, the current language stays empty and the mutex is not recursive: neither the
     * two-argument getShortText() nor reloadLanguage() may be called on an object built this way,
     * since they take the mutex twice on one thread and would block for ever.
     */
    TextManagerBase(const QString& languageName, QJsonObject& languageObject);

    ~TextManagerBase() override;

    /**
     * Loads all language files, then all files of short texts. Takes the lock.
     *
     * Languages found again are replaced; those whose files have disappeared, or can no longer be
     * parsed, stay as they were.
     */
    void loadLanguages();

    /**
     * Loads every file of @p folderPath whose name ends in the language file extension into
     * @p languageMap, in the case-insensitive order of the names: of two files with the same base
     * name the later one is kept. Takes no lock of its own; the caller holds it. Nothing is kept of
     * what goes into a map of the caller's own.
     *
     * An empty @p folderPath stands for the process's current directory.
     */
    void addLanguage(const QString& folderPath, QMap<QString, QJsonObject>& languageMap);

    /**
     * Reads and parses one language file. Takes the lock.
     *
     * @param languageObject receives the top-level object of whatever file could be parsed, also
     * of one that is then refused. Unchanged, and nothing logged, when the file cannot be opened or
     * is no JSON. Only regular files are opened, which never waits: no FIFO, no device.
     * @return whether the file is a language file. One without "Content" is not, and is a warning:
     * "No 'Content'-key found in language file:" with the path.
     */
    bool loadAndParseFromJson(const QString& filePath, QJsonObject& languageObject);

    /** Path of the file of @p languageName: folder, name, "." and extension. Takes no lock. */
    QString getLanguageFileNameFromLanguageName(const QString& languageName) const;
    /** Path of the short texts of @p languageName; empty without short texts. Takes no lock. */
    QString getShortLanguageFileNameFromLanguageName(const QString& languageName) const;
    /** Path of the short-text folder, without a "/" at its end; empty without short texts. Takes no
     * lock. */
    QString getShortLanguageFilepath() const;
    /** Key of the current language. Takes no lock. */
    QString getLanguageName() const;
    /** What follows the last "/" of @p textUrl; all of it when there is none. */
    static QString extractLanguageFromTextUrl(const QString& textUrl);
    /** Keys of the languages that are loaded, in ascending order; those of short texts play no
     * part. Takes the lock. */
    QStringList getAvailableLanguages() const;

    /**
     * The text at @p textUrl, with fallback. Takes the lock.
     *
     * @param ok set to whether the language tried last has an entry at the URL: true for a text
     * from a fallback language, and also for an entry that is there but empty or no string.
     * @param languageKey the wanted language.
     * @param skipLanguageSelection whether an empty @p languageKey is taken as it is, so that the
     * fallback languages answer; otherwise it stands for the current language.
     * @return the text; empty, never the URL, when no language has one.
     */
    QString getText(const QString& textUrl, bool& ok, const QString& languageKey,
                    bool skipLanguageSelection) const;
    /** The text at @p textUrl, with fallback; an empty @p languageKey stands for the current
     * language. Takes the lock. */
    QString getText(const QString& textUrl, const QString& languageKey) const;

    /**
     * The key of the language whose text getText() answers for @p textUrl and @p languageKey; empty
     * when no language has one. An empty @p languageKey stands for the current language. Takes the
     * lock. It warns as getText() does.
     *
     * An addition to the interface: it tells a screen reader or a font choice how to take the text.
     */
    QString getAnsweringLanguage(const QString& textUrl, const QString& languageKey) const;

    /**
     * The short text at @p textUrl in @p languageKey, or in the current language when that is
     * empty; without a short text, what getText() answers. Short texts of other languages are
     * deliberately not tried. Takes the lock.
     *
     * @param ok set to whether the short texts have an entry at the URL. It deliberately stays
     * false when the full text is returned because there is none, so that the substitute can be
     * told from a short text. Where the entry is empty or no string, it is true beside the full
     * text.
     */
    QString getShortText(const QString& textUrl, bool& ok, const QString& languageKey) const;
    /** As above, without the flag. Takes the lock twice: not for an object built in memory. */
    QString getShortText(const QString& textUrl, const QString& languageKey) const;

    /**
     * The comment at @p textUrl, with fallback.
     *
     * Deliberately unlike getText(), it takes no lock, and an empty @p languageKey is not replaced
     * by the current language, so that the fallback languages answer. Without the lock, a call that
     * runs while another thread reloads may crash the program: use it where nobody reloads
     * meanwhile.
     *
     * @param ok set as by getText().
     */
    QString getComment(const QString& textUrl, const QString& languageKey, bool& ok) const;
    /** As above, without the flag, and not beside a reload either. */
    QString getComment(const QString& textUrl, const QString& languageKey) const;

    /** @p languageKey, or the current language when that is empty. Takes no lock. */
    QString selectSuitableLanguageKey(const QString& languageKey) const;

    /**
     * One field of the header of @p languageKey, deliberately without fallback; an empty key is
     * not replaced by the current language. Takes the lock.
     *
     * The last argument has no effect; it is kept for compatibility.
     *
     * @return the field; empty when the language or its field is missing, and, with a warning, for
     * a @p headerInfo that is no enumerator.
     */
    QString getHeaderText(TextManagerDefinitions::HeaderInfo headerInfo, const QString& languageKey,
                          bool) const;

    /**
     * Language and sub-language from the header of @p languageKey or, when that is not loaded, of
     * "en_US"; deliberately never of "POSIX". Both empty when neither is loaded. Takes the lock.
     */
    QPair<QString, QString> getLanguageHeaderInfo(const QString& languageKey) const;

    /**
     * All text URLs of @p languageKey or, when that is not loaded, of "en_US"; deliberately never
     * of "POSIX". Empty when neither is loaded. Takes the lock.
     */
    QStringList getAvailableUrls(const QString& languageKey) const;

    /**
     * Makes @p reader the source of dynamic texts. It stays the caller's and must outlive this
     * object. Takes no lock: not while getDynamicText() runs in another thread.
     */
    void setDynamicTextReader(DynamicTextReaderInterface& reader);

    /**
     * The dynamic text at @p url for @p language, as DynamicTextHandler::getText() answers it: with
     * a fallback among the languages of that text alone, and empty, with a warning, before any
     * setDynamicTextReader().
     *
     * Deliberately unlike getText(), it takes no lock, so that a slow reader blocks nobody, and an
     * empty @p language is not replaced by the current language.
     */
    QString getDynamicText(const QString& url, const QString& language) const;

Q_SIGNALS:
    /** Emitted after every reloadLanguage(), whether or not any file could be read. */
    void languageReloaded();

public Q_SLOTS:
    /** Loads everything again, as loadLanguages() does, then emits languageReloaded(). */
    void reloadLanguage();

protected:
    /**
     * The string under @p valueKey of the node at @p textUrl inside @p contentKey, in one language
     * of @p languageMap, without fallback. Takes no lock.
     *
     * @param ok set to whether the entry was found.
     */
    QString getObjectFromMap(const QMap<QString, QJsonObject>& languageMap, const QString& textUrl,
                             bool& ok, const QString& languageKey, const QString& contentKey,
                             const QString& valueKey) const;
    /** As getObjectFromMap(), with fallback; @p ok speaks of the language tried last. */
    QString getTextOrComment(const QMap<QString, QJsonObject>& languageMap, const QString& textUrl,
                             bool& ok, const QString& languageKey, const QString& contentKey,
                             const QString& valueKey) const;

    QString m_StrLanguagePath;                     ///< language folder, used as a plain prefix
    QString m_StrLanguageName;                     ///< key of the current language
    QMap<QString, QJsonObject> m_LanguageMap;      ///< language key to document: full texts
    QMap<QString, QJsonObject> m_ShortLanguageMap; ///< language key to document: short texts
    mutable TextManagerMutex m_Mutex;              ///< guards both maps
    QString m_StrShortLanguageFolder;              ///< sub-folder of short texts; empty: none
    DynamicTextHandler m_DynamicTextHandler;       ///< reads dynamic texts; not under the mutex

private:
    std::optional<QJsonObject> readFile(const QString& folderPath, const QString& filePath,
                                        bool isRemembered);
    const QString& chosenLanguage(const QString& languageKey) const;
    LookUpAnswer fullAnswer(const QString& textUrl, const QString& languageKey) const;
    LookUpAnswer shortAnswer(const QString& textUrl, const QString& languageKey) const;
    template<typename LookUp>
    LookUpAnswer remembered(AnswerMemory& memory, const LookUpDocuments& documents,
                            const QString& textUrl, LookUp lookUp) const;
    LookUpAnswer walk(const QMap<QString, QJsonObject>& languageMap, const QString& textUrl,
                      const QString& languageKey, const QString& contentKey,
                      const QString& valueKey) const;
    QJsonObject documentOrFirstFallback(const QString& languageKey) const;
};
