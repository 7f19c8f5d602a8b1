#pragma once

#include <QFile>
#include <QString>

#include <optional>

struct stat;

/** What tells of a file, without opening it, that it is still as it was. */
class FileStamp
{
public:
    /** The stamp of what is at that path; nothing when that is no regular file of the system. */
    static std::optional<FileStamp> ofPath(const QString& path);
    explicit FileStamp(const struct stat& status);

    /**
     * Whether a change from now on is certain to change the stamp: not in the grain of the file
     * system's clock, when the file has just been written, nor where a clock is wrong.
     */
    bool isOld() const;
    bool operator==(const FileStamp& other) const;

private:
    using Nanoseconds = qint64;

    quint64 m_Device;
    quint64 m_Inode;
    qint64 m_Size;
    Nanoseconds m_Modified;
    Nanoseconds m_Changed; ///< by anything, also by setting the other time back
};

/**
 * A regular file, opened for reading. Nothing else is opened, such as a FIFO or a device, which may
 * keep the reader waiting for ever or never come to an end; and opening does not wait.
 */
class RegularFile
{
public:
    /** Whether there is such a file, also at the end of a link, and it could be opened. */
    bool open(const QString& path);
    QByteArray readAll() { return m_File.readAll(); }

    /**
     * What the file is known by as long as nobody changes it; taken when it was opened. Nothing
     * when it was written a moment ago, or its file system does not tell reliably.
     */
    const std::optional<FileStamp>& lastingStamp() const { return m_LastingStamp; }

private:
    QFile m_File;
    std::optional<FileStamp> m_LastingStamp;
};
