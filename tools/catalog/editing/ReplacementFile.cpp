#include "ReplacementFile.h"

#include "FileAttributes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr mode_t modeOfNewFiles = 0666; // what the user's mask takes away is left out

QLatin1String endOfName()
{
    return QLatin1String(".new");
}

QString lastError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

QString nameOfTemporary(const QString& path, const QString& middle)
{
    return QStringLiteral(".%1.%2%3").arg(QFileInfo(path).fileName(), middle, endOfName());
}

constexpr int lettersOfChance = 6;

/** A path that hardly anything has yet. */
QByteArray temporaryPath(const QByteArray& path)
{
    QString chance;
    for (int letter = 0; letter < lettersOfChance; ++letter)
        chance += QLatin1Char(static_cast<char>('a' + QRandomGenerator::global()->bounded(26)));
    const QString name = QFile::decodeName(path);
    return QFile::encodeName(QFileInfo(name).dir().filePath(nameOfTemporary(name, chance)));
}

/** Calls @p make with one path after the other, until it is there or fails for another reason. */
template<typename Make>
QByteArray makeUnderNewName(const QByteArray& path, Make make)
{
    QByteArray temporary = temporaryPath(path);
    while (!make(temporary)) {
        if (errno != EEXIST)
            return QByteArray();
        temporary = temporaryPath(path);
    }
    return temporary;
}

} // namespace

ReplacementFile::ReplacementFile(const QString& path)
    : m_Path(QFile::encodeName(path))
    , m_Folder(QFile::encodeName(QFileInfo(path).path()))
{
}

ReplacementFile::~ReplacementFile()
{
    if (!m_TemporaryPath.isEmpty())
        ::unlink(m_TemporaryPath.constData());
    if (m_File >= 0)
        ::close(m_File);
}

QString ReplacementFile::prepare(const QByteArray& bytes)
{
    if (!openUnnamed() && !openNamed())
        return lastError();
    // Nobody sweeps it up as long as it is locked so.
    [[maybe_unused]] const int locked = ::flock(m_File, LOCK_EX | LOCK_NB);
    const QString loss = keepAttributes(m_Path, m_File);
    return loss.isEmpty() ? write(bytes) : loss;
}

QString ReplacementFile::putInPlace()
{
    if (m_TemporaryPath.isEmpty()) {
        // What has no name can be given one, but none that is taken.
        const QByteArray open = "/proc/self/fd/" + QByteArray::number(m_File);
        m_TemporaryPath = makeUnderNewName(m_Path, [&](const QByteArray& path) {
            return ::linkat(AT_FDCWD, open.constData(), AT_FDCWD, path.constData(),
                            AT_SYMLINK_FOLLOW) == 0;
        });
    }
    if (m_TemporaryPath.isEmpty() || ::rename(m_TemporaryPath.constData(), m_Path.constData()) != 0)
        return lastError();
    m_TemporaryPath.clear();
    return QString();
}

QString ReplacementFile::syncFolder() const
{
    const int folder = ::open(m_Folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return lastError();
    const bool isSynced = ::fsync(folder) == 0 || errno == EINVAL; // EINVAL: nothing to sync there
    const QString error = isSynced ? QString() : lastError();
    ::close(folder);
    return error;
}

void ReplacementFile::sweepUp(const QString& path)
{
    const QDir folder = QFileInfo(path).dir();
    const QString start = nameOfTemporary(path, QString()).chopped(endOfName().size());
    const QStringList names = folder.entryList({QLatin1Char('*') + endOfName()},
                                               QDir::Files | QDir::Hidden | QDir::NoSymLinks);
    for (const QString& name : names) {
        const auto size = start.size() + lettersOfChance + endOfName().size();
        if (!name.startsWith(start) || name.size() != size)
            continue;
        const QByteArray left = QFile::encodeName(folder.filePath(name));
        const int file = ::open(left.constData(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
        if (file >= 0 && ::flock(file, LOCK_EX | LOCK_NB) == 0)
            ::unlink(left.constData());
        if (file >= 0)
            ::close(file);
    }
}

bool ReplacementFile::openUnnamed()
{
    m_File = ::open(m_Folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, modeOfNewFiles);
    return m_File >= 0;
}

bool ReplacementFile::openNamed()
{
    m_TemporaryPath = makeUnderNewName(m_Path, [this](const QByteArray& path) {
        m_File = ::open(path.constData(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, modeOfNewFiles);
        return m_File >= 0;
    });
    return m_File >= 0;
}

/** Writes all; on a full disk the first part fits, and only the next write tells why no more do. */
QString ReplacementFile::write(const QByteArray& bytes) const
{
    ssize_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::write(m_File, bytes.constData() + written,
                                      static_cast<std::size_t>(bytes.size() - written));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return lastError();
        written += count;
    }
    return ::fsync(m_File) == 0 ? QString() : lastError();
}
