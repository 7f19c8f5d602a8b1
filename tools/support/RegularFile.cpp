#include "RegularFile.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>

FileContent readRegularFile(const QString& path)
{
    const auto lastError = [] {
        return FileContent{std::nullopt, QString::fromLocal8Bit(std::strerror(errno))};
    };
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return lastError();
    QFile file;
    file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0)
        return lastError();
    if (!S_ISREG(status.st_mode))
        return {std::nullopt, QStringLiteral("it is no regular file")};
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return {std::nullopt, file.errorString()};
    return {bytes, QString()};
}
