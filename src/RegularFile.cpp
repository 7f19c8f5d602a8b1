#include "RegularFile_p.h"

#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace
{

constexpr qint64 nanosecondsOfASecond = 1'000'000'000;

qint64 toNanoseconds(const timespec& time)
{
    return time.tv_sec * nanosecondsOfASecond + time.tv_nsec;
}

int openWithoutWaiting(const QByteArray& path)
{
    int descriptor = -1;
    do {
        descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

/**
 * Whether a file lies where every change, whoever makes it, is seen at once in both of its times.
 * The numbers are those of <linux/magic.h>, which does not name all of them everywhere.
 */
bool isOnLocalFileSystem(int descriptor)
{
    struct statfs fileSystem;
    if (::fstatfs(descriptor, &fileSystem) != 0)
        return false;
    switch (static_cast<quint32>(fileSystem.f_type)) {
    case 0xEF53:     // ext2, ext3, ext4
    case 0x58465342: // xfs
    case 0x9123683E: // btrfs
    case 0xF2F52010: // f2fs
    case 0x24051905: // ubifs
    case 0x01021994: // tmpfs
    case 0x794C7630: // overlayfs
    case 0x73717368: // squashfs
    case 0xE0F5E1E2: // erofs
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<FileStamp> FileStamp::ofPath(const QString& path)
{
    struct stat status;
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileStamp(status);
}

FileStamp::FileStamp(const struct stat& status)
    : m_Device(status.st_dev)
    , m_Inode(status.st_ino)
    , m_Size(status.st_size)
    , m_Modified(toNanoseconds(status.st_mtim))
    , m_Changed(toNanoseconds(status.st_ctim))
{
}

bool FileStamp::isOld() const
{
    constexpr qint64 coarsestGrain = 3 * nanosecondsOfASecond;
    timespec now;
    return ::clock_gettime(CLOCK_REALTIME, &now) == 0 &&
           toNanoseconds(now) - std::max(m_Modified, m_Changed) >= coarsestGrain;
}

bool FileStamp::operator==(const FileStamp& other) const
{
    return m_Device == other.m_Device && m_Inode == other.m_Inode && m_Size == other.m_Size &&
           m_Modified == other.m_Modified && m_Changed == other.m_Changed;
}

bool RegularFile::open(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isFile()) // before it is opened: a device may do something then
        return false;
    if (!info.isNativePath()) { // a resource of the program
        m_File.setFileName(path);
        return m_File.open(QIODevice::ReadOnly);
    }

    const int descriptor = openWithoutWaiting(QFile::encodeName(info.filePath()));
    if (descriptor < 0)
        return false;
    struct stat status;
    const bool isRegular = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    if (!isRegular || !m_File.open(descriptor, QIODevice::ReadOnly, QFile::AutoCloseHandle)) {
        ::close(descriptor);
        return false;
    }
    const FileStamp stamp(status);
    if (stamp.isOld() && isOnLocalFileSystem(descriptor))
        m_LastingStamp = stamp;
    return true;
}
