#pragma once

#include "Finding.h"
#include "LanguageDocument.h"
#include "TextKey.h"

#include <QSet>
#include <QString>
#include <QVector>

#include <functional>
#include <vector>

/** One file of a language folder, as it is stored. */
struct CatalogFile {
    QString path;     ///< as the folder's path names it
    QString file;     ///< relative to the language folder
    QString language; ///< the key under which a text manager loads it
    bool isShort = false;
    /** Whether a text manager answers with it: it loads, and no other file of its key does later.
     */
    bool isLoaded = false;
    LanguageDocument document; ///< empty when the file cannot be read
    QVector<Finding> faults;   ///< why it is not loaded, and what it loses when it is
};

/**
 * A language folder, opened once: its files as they are stored, the full texts and those of a
 * short-text folder, in the order in which a text manager loads them.
 */
class LanguageCatalog
{
public:
    /** Why there is no folder to read at @p path, as a sentence; empty when there is. */
    static QString findFolderFault(const QString& path);

    /** Whether the file of a language need not be looked at: it is the only one, and loads. */
    using IsKnown = std::function<bool(const QString& language, bool isShort)>;

    /**
     * Reads a folder that is there: see findFolderFault().
     *
     * @param shortFolder name of the sub-folder of short texts; empty: none.
     * @param isKnown asked for each language of which there is one file only; those that are known
     * are passed over.
     */
    explicit LanguageCatalog(const QString& folderPath, const QString& shortFolder = QString(),
                             const IsKnown& isKnown = {});

    const std::vector<CatalogFile>& files() const { return m_Files; }
    /** The file that a text manager answers with for a language; null when there is none. */
    const CatalogFile* find(const QString& language, bool isShort = false) const;

    /** The faults of all files, in the order of the files. */
    QVector<Finding> findFaults() const;
    /** Why files are left out by a text manager, one fault for each. */
    QVector<Finding> findLeftOut() const;

private:
    void addFolder(const QString& folderPath, const QString& subFolder, const IsKnown& isKnown);
    void addFile(const QString& path, const QString& file, const QString& language, bool isShort);
    void addNamesThatNobodyLoads(const QString& folderPath, const QString& prefix,
                                 const QSet<TextKey>& listedNames);
    void addUnreadable(const QString& path, const QString& file, bool isShort,
                       const QString& reason);
    void settleLanguage(CatalogFile& added);

    std::vector<CatalogFile> m_Files;
};
