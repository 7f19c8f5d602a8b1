#include "RegularFile_p.h"

#include <QFileInfo>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace
{

int openWithoutWaiting(const QByteArray& path)
{
    int descriptor = -1;
    do {
        descriptor = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

} // namespace

QByteArray RegularFile::readAll()
{
    const qint64 size = m_File.size();
    const QByteArray bytes = m_File.readAll();
    if (m_File.error() != QFileDevice::NoError || bytes.size() < size)
        m_LastingStamp.reset();
    return bytes;
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
    struct statfs fileSystem;
    const FileStamp stamp(status);
    if (::fstatfs(descriptor, &fileSystem) == 0 && stamp.isLasting(fileSystem))
        m_LastingStamp = stamp;
    return true;
}
