#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

class LockedFile;

/**
 * Files that are changed together: all of them, or none.
 *
 * They are locked for as long as the object lives, in the order of their real paths, so that two
 * transactions never wait for each other. Saving first writes all new files beside the old ones and
 * brings them to the disk, then puts one after the other in its place. Only what ends the program
 * between two of these last steps leaves some files new and some old, each of them whole.
 *
 * Owner, permissions, access control lists and extended attributes of a file stay, and symbolic
 * links stay links. A file that has further names (hard links) is refused: they would part.
 */
class FileTransaction
{
public:
    FileTransaction();
    ~FileTransaction();
    FileTransaction(FileTransaction&& other) noexcept;
    FileTransaction& operator=(FileTransaction&& other) noexcept;

    /**
     * Locks and reads the files at @p paths; once. A path where nothing is yet is locked, too.
     *
     * @return why that is not possible, with the path; empty when it is done.
     */
    QString lock(const QStringList& paths);

    /** The bytes of a file as it was read under the lock; nothing where there was none. */
    std::optional<QByteArray> bytesOf(const QString& path) const;

    /** Wants @p bytes in the file at @p path, one of those that are locked. */
    void write(const QString& path, const QByteArray& bytes);

    /** Whether any file would change. */
    bool isChanged() const;

    /**
     * Saves what is wanted; files that hold it already are left alone.
     *
     * @return why not all files now hold what is wanted, and do after a power failure; empty when
     * they do. If they do not, all are as they were, unless the message says otherwise.
     */
    QString save();
    /** Saves what several transactions want, all of it or nothing, as save() does. */
    static QString saveAll(const std::vector<FileTransaction*>& transactions);

private:
    LockedFile* find(const QString& path) const;

    std::vector<std::unique_ptr<LockedFile>> m_Files;
};
