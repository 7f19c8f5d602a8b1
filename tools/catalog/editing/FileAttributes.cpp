#include "FileAttributes.h"

#include <QList>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace
{

QString describeLoss(const QByteArray& attribute, const QString& reason)
{
    return QStringLiteral("its attribute %1 cannot be kept: %2")
        .arg(QString::fromLocal8Bit(attribute), reason);
}

QList<QByteArray> attributesOf(const QByteArray& path)
{
    const ssize_t size = ::listxattr(path.constData(), nullptr, 0);
    QByteArray names(static_cast<int>(std::max<ssize_t>(size, 0)), '\0');
    const ssize_t read =
        ::listxattr(path.constData(), names.data(), static_cast<std::size_t>(names.size()));
    names.truncate(static_cast<int>(std::max<ssize_t>(read, 0)));
    QList<QByteArray> list = names.split('\0');
    list.removeAll(QByteArray());
    return list;
}

bool copyAttribute(const QByteArray& path, const QByteArray& name, int newFile)
{
    const ssize_t size = ::getxattr(path.constData(), name.constData(), nullptr, 0);
    if (size < 0)
        return false;
    QByteArray value(static_cast<int>(size), '\0');
    const ssize_t read = ::getxattr(path.constData(), name.constData(), value.data(),
                                    static_cast<std::size_t>(value.size()));
    return read == size && ::fsetxattr(newFile, name.constData(), value.constData(),
                                       static_cast<std::size_t>(value.size()), 0) == 0;
}

/** Whether it is somebody's, and not the system's own label, which follows its own rules. */
bool isKept(const QByteArray& name)
{
    return name.startsWith("user.") || name.startsWith("system.posix_acl_");
}

} // namespace

QString keepAttributes(const QByteArray& oldPath, int newFile)
{
    struct stat old = {};
    if (::stat(oldPath.constData(), &old) != 0)
        return QString();
    const bool isOwnerKept = ::fchown(newFile, old.st_uid, static_cast<gid_t>(-1)) == 0;
    const bool isGroupKept = ::fchown(newFile, static_cast<uid_t>(-1), old.st_gid) == 0;

    // The folder may have given it a list of its own.
    [[maybe_unused]] const int removed = ::fremovexattr(newFile, "system.posix_acl_access");
    const mode_t kept = isOwnerKept && isGroupKept ? 07777 : 0777;
    mode_t mode = old.st_mode & kept;
    if (!isGroupKept)
        mode &= ~static_cast<mode_t>(S_IRWXG) | ((mode & S_IRWXO) << 3);
    if (::fchmod(newFile, mode) != 0)
        return QStringLiteral("its permissions cannot be kept: %1")
            .arg(QString::fromLocal8Bit(std::strerror(errno)));

    for (const QByteArray& name : attributesOf(oldPath)) {
        // The list names rights of the owning group, which would be another one's now.
        if (!isGroupKept && name.startsWith("system.posix_acl_"))
            return describeLoss(name, QStringLiteral("you are not in the group of the file"));
        if (!copyAttribute(oldPath, name, newFile) && isKept(name))
            return describeLoss(name, QString::fromLocal8Bit(std::strerror(errno)));
    }
    return QString();
}
