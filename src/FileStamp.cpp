#include "FileStamp_p.h"

#include <QFile>

#include <algorithm>
#include <ctime>

#include <sys/stat.h>
#include <sys/vfs.h>

namespace
{

constexpr qint64 nanosecondsOfASecond = 1'000'000'000;

qint64 toNanoseconds(const timespec& time)
{
    return time.tv_sec * nanosecondsOfASecond + time.tv_nsec;
}

/** For longer than the grain of the coarsest clock of a file system. */
bool isOld(qint64 time)
{
    constexpr qint64 age = 3 * nanosecondsOfASecond;
    timespec now;
    return ::clock_gettime(CLOCK_REALTIME, &now) == 0 && toNanoseconds(now) - time >= age;
}

/**
 * Whether every change, whoever makes it, is seen there at once in both times of the file. The
 * numbers are those of <linux/magic.h>, which does not name all of them everywhere.
 *
 * Not among them are the images that are only read, squashfs and erofs: their times are what the
 * image says, and another image, built with fixed times, can be mounted in the place of the first.
 */
bool isLocal(const struct statfs& fileSystem)
{
    switch (static_cast<quint32>(fileSystem.f_type)) {
    case 0xEF53:     // ext2, ext3, ext4
    case 0x58465342: // xfs
    case 0x9123683E: // btrfs
    case 0xF2F52010: // f2fs
    case 0x24051905: // ubifs
    case 0x01021994: // tmpfs
    case 0x794C7630: // overlayfs
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<FileStamp> FileStamp::ofPath(const QString& path)
{
    struct stat status;
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return FileStamp(status);
}

std::optional<FileStamp> FileStamp::lastingOfPath(const QString& path)
{
    struct statfs fileSystem;
    const std::optional<FileStamp> stamp = ofPath(path);
    const bool isLasting = stamp &&
                           ::statfs(QFile::encodeName(path).constData(), &fileSystem) == 0 &&
                           stamp->isLasting(fileSystem);
    return isLasting ? stamp : std::nullopt;
}

FileStamp::FileStamp(const struct stat& status)
    : m_Device(status.st_dev)
    , m_Inode(status.st_ino)
    , m_Size(status.st_size)
    , m_Modified(toNanoseconds(status.st_mtim))
    , m_Changed(toNanoseconds(status.st_ctim))
{
}

bool FileStamp::isLasting(const struct statfs& fileSystem) const
{
    return isOld(std::max(m_Modified, m_Changed)) && isLocal(fileSystem);
}

bool FileStamp::operator==(const FileStamp& other) const
{
    return m_Device == other.m_Device && m_Inode == other.m_Inode && m_Size == other.m_Size &&
           m_Modified == other.m_Modified && m_Changed == other.m_Changed;
}
