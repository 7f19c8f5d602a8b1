#pragma once

#include "LanguageCatalog.h"
#include "PackedDocument.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVector>

#include <memory>

/** What is to be packed, and how. */
struct PackRequest {
    QString folderPath;
    QString shortFolder; ///< name of the sub-folder; empty: none
    QString outputPath;
    QStringList languages; ///< keys of those that are packed; empty: all
    PackedComments comments = PackedComments::Kept;
    bool isForced = false; ///< whether the output folder may hold something
};

/** One file of a pack. */
struct PackedFile {
    QString file;                ///< relative to the language folder
    QString::size_type size = 0; ///< in bytes, as it was
    QString::size_type packedSize = 0;
};

/**
 * A language folder on its way to a device. It is packed beside the output folder and then put into
 * it, so that a pack that is refused leaves nothing behind.
 */
class FolderPack
{
public:
    /** Reads the folder, which has to be there. */
    explicit FolderPack(const PackRequest& request);

    /** The faults of the files that are to be packed. */
    QVector<Finding> findFaults() const;
    /** Why the folder cannot be packed so, as a sentence; empty when it can. */
    QString findObstacle() const;

    /** The files to be packed, relative to the folder. */
    QStringList sources() const;
    /** The languages to be packed. */
    QStringList languages() const;
    /** Packs one of sources(). @return why that could not be done; empty when it is. */
    QString pack(const QString& source);
    /** What was packed so far. */
    const QVector<PackedFile>& files() const { return m_Files; }
    /** The folder that it was packed into; it goes with this object. */
    QString packedPath() const;
    /** Puts the files into the output folder, which has the unfinishedMark() meanwhile. @return why
     * that could not be done; empty when it is. */
    QString publish();

    /** Name of a file that says that the pack beside it is of both old and new files. */
    static QString unfinishedMark();

private:
    bool isWanted(const QString& language) const;
    const CatalogFile* find(const QString& source) const;
    QString findOverwrittenInput() const;
    QString findForeignFile() const;
    QString putInPlace() const;

    const PackRequest m_Request;
    const LanguageCatalog m_Catalog;
    std::unique_ptr<QTemporaryDir> m_Packed;
    QVector<PackedFile> m_Files;
};
