#include "LockedFile.h"

#include "RegularFile.h"
#include "ReplacementFile.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <sys/stat.h>

namespace
{

constexpr int lockPatienceInMilliseconds = 3000;
// What one that dies while it locks leaves behind names no process and is told by its age. It has
// to be less than the patience. One that lives keeps its lock, however old: it has the file locked
// in the kernel, too.
constexpr int staleLockInMilliseconds = 2000;

/** Where a path leads: links are followed, so that they stay links when the file is replaced. */
QString realPathOf(const QString& path)
{
    const QString realPath = QFileInfo(path).canonicalFilePath();
    return realPath.isEmpty() ? QFileInfo(path).absoluteFilePath() : realPath;
}

QString lockPathOf(const QString& realPath)
{
    const QFileInfo info(realPath);
    return info.dir().filePath(QStringLiteral(".%1.lock").arg(info.fileName()));
}

bool isNoRegularFile(const QString& path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 && !S_ISREG(status.st_mode);
}

bool hasFurtherNames(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 && status.st_nlink > 1;
}

} // namespace

LockedFile::LockedFile(const QString& path)
    : m_StrPath(path)
    , m_StrRealPath(realPathOf(path))
    , m_Lock(lockPathOf(m_StrRealPath))
{
    m_Lock.setStaleLockTime(staleLockInMilliseconds);
}

QString LockedFile::open()
{
    const QString fault = lock();
    if (!fault.isEmpty())
        return fault;
    ReplacementFile::sweepUp(m_StrRealPath);
    if (isNothingAt(m_StrPath))
        return QString();
    const FileContent content = readRegularFile(m_StrRealPath);
    if (!content.bytes)
        return QStringLiteral("%1: cannot be read: %2.").arg(m_StrPath, content.error);
    if (hasFurtherNames(m_StrRealPath))
        return QStringLiteral("%1: cannot be edited: the file has another name, too (a hard link), "
                              "which would keep the old texts. Make one of them a symbolic link.")
            .arg(m_StrPath);
    m_Bytes = content.bytes;
    return QString();
}

bool LockedFile::isAsRead() const
{
    if (!m_Bytes)
        return isNothingAt(m_StrPath);
    return readRegularFile(m_StrRealPath).bytes == m_Bytes &&
           realPathOf(m_StrPath) == m_StrRealPath;
}

QString LockedFile::lock()
{
    if (isNoRegularFile(lockPath())) // to ask it for its holder could wait for ever
        return QStringLiteral("%1: cannot be edited: what is in the place of its lock, %2, is no "
                              "regular file. Remove it.")
            .arg(m_StrPath, lockPath());
    constexpr unsigned long pauseInMilliseconds = 10;
    const QDeadlineTimer deadline(lockPatienceInMilliseconds);
    while (!m_Lock.tryLock(0)) {
        if (m_Lock.error() != QLockFile::LockFailedError)
            return QStringLiteral("%1: cannot be edited: there can be no lock file %2, %3.")
                .arg(m_StrPath, lockPath(),
                     m_Lock.error() == QLockFile::PermissionError
                         ? QStringLiteral("you may not write in its folder")
                         : QStringLiteral("the disk may be full"));
        if (deadline.hasExpired())
            return describeHolder();
        QThread::msleep(pauseInMilliseconds);
    }
    return QString();
}

QString LockedFile::lockPath() const
{
    return lockPathOf(m_StrRealPath);
}

QString LockedFile::describeHolder() const
{
    qint64 process = 0;
    QString host;
    QString program;
    m_Lock.getLockInfo(&process, &host, &program);
    return QStringLiteral("%1: is being edited by '%2', process %3 on %4. Nothing was changed; try "
                          "again later.")
        .arg(m_StrPath, program, QString::number(process), host);
}
