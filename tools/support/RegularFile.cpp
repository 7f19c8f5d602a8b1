#include "RegularFile.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <limits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

QString lastError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/** All that can be read. QFile would take what came before an error of the disk for all. */
FileContent readAll(int descriptor, off_t expectedSize)
{
    constexpr int partSize = 64 * 1024;
    constexpr int limitInBytes = std::numeric_limits<int>::max() - 2 * partSize;
    QByteArray bytes;
    bytes.reserve(static_cast<int>(std::min<off_t>(expectedSize, limitInBytes)));
    std::vector<char> part(partSize);
    for (;;) {
        const ssize_t size = ::read(descriptor, part.data(), part.size());
        if (size < 0 && errno == EINTR)
            continue;
        if (size > 0 && bytes.size() > limitInBytes)
            errno = EFBIG;
        if (size < 0 || bytes.size() > limitInBytes)
            return {std::nullopt, lastError()};
        if (size == 0)
            return {bytes, QString()};
        bytes.append(part.data(), static_cast<int>(size));
    }
}

FileContent readOpened(int descriptor)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0)
        return {std::nullopt, lastError()};
    if (!S_ISREG(status.st_mode))
        return {std::nullopt, QStringLiteral("it is no regular file")};
    return readAll(descriptor, status.st_size);
}

} // namespace

FileContent readRegularFile(const QString& path)
{
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return {std::nullopt, lastError()};
    FileContent content = readOpened(descriptor);
    ::close(descriptor);
    return content;
}

bool isNothingAt(const QString& path)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(path).constData(), &status) != 0 &&
           (errno == ENOENT || errno == ENOTDIR);
}

FolderNames readFolder(const QString& path)
{
    namespace fs = std::filesystem;
    FolderNames folder;
    std::error_code error;
    fs::directory_iterator entry(QFile::encodeName(path).toStdString(), error);
    for (const fs::directory_iterator end; !error && entry != end; entry.increment(error))
        folder.names.push_back(QByteArray::fromStdString(entry->path().filename().native()));
    std::sort(folder.names.begin(), folder.names.end());
    if (error)
        folder.error = QString::fromLocal8Bit(std::strerror(error.value()));
    return folder;
}
