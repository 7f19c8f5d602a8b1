#pragma once

#include <QString>

#include <optional>

struct stat;
struct statfs;

/** What tells of a file or a folder, without opening it, that it is still as it was. */
class FileStamp
{
public:
    /** The stamp of what is at that path now; nothing when nothing is. */
    static std::optional<FileStamp> ofPath(const QString& path);
    /** The same, as long as isLasting(); else nothing. */
    static std::optional<FileStamp> lastingOfPath(const QString& path);
    explicit FileStamp(const struct stat& status);

    /**
     * Whether a change from now on is certain to change the stamp. It is not within the grain of a
     * file system's clock, when there was a change a moment ago, nor where the clock is wrong, nor
     * on a file system that is not local, or that is an image with times of its own.
     */
    bool isLasting(const struct statfs& fileSystem) const;
    bool operator==(const FileStamp& other) const;

private:
    using Nanoseconds = qint64;

    quint64 m_Device;
    quint64 m_Inode;
    qint64 m_Size;
    Nanoseconds m_Modified;
    Nanoseconds m_Changed; ///< by anything, also by setting the other time back
};
