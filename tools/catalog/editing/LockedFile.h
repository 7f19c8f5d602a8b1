#pragma once

#include <QByteArray>
#include <QLockFile>
#include <QString>

#include <optional>

/**
 * A file, or the place of one, that other editors of this kind keep out of.
 *
 * The lock is a file beside it, `.NAME.lock`. A lock of the dead keeps nobody out.
 */
class LockedFile
{
public:
    /** @param path as it is named to the user. */
    explicit LockedFile(const QString& path);

    /** Locks and reads the file. @return why that is not possible; empty when it is done. */
    QString open();

    const QString& path() const { return m_StrPath; }
    /** What the path leads to, when it is a symbolic link. */
    const QString& realPath() const { return m_StrRealPath; }
    /** The bytes as they were read; nothing when there was no file. */
    const std::optional<QByteArray>& bytes() const { return m_Bytes; }

    /** Whether the file is as it was read: other programs know nothing of the lock. */
    bool isAsRead() const;

    bool isChanged() const { return wanted && wanted != m_Bytes; }

    std::optional<QByteArray> wanted; ///< what is to be saved; nothing: no change

private:
    QString lock();
    QString lockPath() const;
    QString describeHolder() const;

    QString m_StrPath;
    QString m_StrRealPath;
    QLockFile m_Lock;
    std::optional<QByteArray> m_Bytes;
};
