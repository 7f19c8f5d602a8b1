#pragma once

#include <QByteArray>
#include <QString>

/**
 * The new file that takes the place of another: first written beside it, then put in its place.
 *
 * As long as it has no name of its own nothing is left of it when the program is killed. Where the
 * file system can do that only for named files it is called `.NAME.XXXXXX.new`.
 */
class ReplacementFile
{
public:
    /** @param path of the file to be replaced, or of a new one; no symbolic link. */
    explicit ReplacementFile(const QString& path);
    ~ReplacementFile(); ///< removes what was not put in place
    Q_DISABLE_COPY_MOVE(ReplacementFile)

    /** Writes the new file and brings it to the disk, with owner, permissions and attributes of the
     * old one. @return why that is not possible; empty when it is done. */
    QString prepare(const QByteArray& bytes);

    /** Puts the new file in place. @return why that is not possible; empty when it is done. */
    QString putInPlace();

    /** Brings the new name to the disk. @return why that is not possible; empty when it is done. */
    QString syncFolder() const;

    /** Removes the new files for @p path that were left by programs that were killed. The caller
     * has the lock of that file. */
    static void sweepUp(const QString& path);

private:
    bool openUnnamed();
    bool openNamed();
    QString write(const QByteArray& bytes) const;

    const QByteArray m_Path;
    const QByteArray m_Folder;
    QByteArray m_TemporaryPath; ///< empty as long as the new file has no name
    int m_File = -1;
};
