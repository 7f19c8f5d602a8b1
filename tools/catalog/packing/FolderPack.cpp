#include "FolderPack.h"

#include "FileCheck.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <tuple>

#include <sys/stat.h>
#include <unistd.h>

namespace
{

QString notWritten(const QString& path, const QString& reason)
{
    return QStringLiteral("%1: cannot be written: %2.").arg(path, reason);
}

/** The folder of a file, or that above it which is there: on the same file system. */
QDir nearestFolder(const QFileInfo& file)
{
    QFileInfo folder(file.path());
    while (!folder.exists() && folder.path() != folder.filePath())
        folder.setFile(folder.path());
    return folder.filePath();
}

timespec modificationTimeOf(const QString& path)
{
    struct stat status = {};
    ::stat(QFile::encodeName(path).constData(), &status);
    return status.st_mtim;
}

bool isEarlier(const timespec& one, const timespec& other)
{
    return std::tie(one.tv_sec, one.tv_nsec) < std::tie(other.tv_sec, other.tv_nsec);
}

} // namespace

FolderPack::FolderPack(const PackRequest& request)
    : m_Request(request)
    , m_Catalog(request.folderPath, request.shortFolder)
{
}

bool FolderPack::isWanted(const QString& language) const
{
    return m_Request.languages.isEmpty() || m_Request.languages.contains(language);
}

QVector<Finding> FolderPack::findFaults() const
{
    QVector<Finding> faults;
    for (const Finding& fault : m_Catalog.findFaults()) {
        if (fault.language.isEmpty() || isWanted(fault.language))
            faults.append(fault);
    }
    return faults;
}

QString FolderPack::findObstacle() const
{
    for (const QString& language : m_Request.languages) {
        if (m_Catalog.find(language) == nullptr)
            return QStringLiteral("there is no language '%1' in '%2'.")
                .arg(language, m_Request.folderPath);
    }
    if (sources().isEmpty())
        return QStringLiteral("there is no language file in '%1'.").arg(m_Request.folderPath);
    const QFileInfo output(m_Request.outputPath);
    if (output.exists() && !output.isDir())
        return QStringLiteral("'%1' is no folder.").arg(m_Request.outputPath);
    const QString loss = findOverwrittenInput();
    if (!loss.isEmpty())
        return loss;
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    const QDir outputFolder(m_Request.outputPath);
    const bool isFree = outputFolder.isEmpty(all) || outputFolder.exists(unfinishedMark());
    if (!m_Request.isForced && !isFree)
        return QStringLiteral("the folder '%1' holds something already. Empty it, or give --force.")
            .arg(m_Request.outputPath);
    return findForeignFile();
}

/** What would be lost of the folder that is to be packed. */
QString FolderPack::findOverwrittenInput() const
{
    QString fault;
    const QDir output(m_Request.outputPath);
    if (!output.exists())
        return fault;
    QStringList inputs;
    for (const CatalogFile& file : m_Catalog.files())
        inputs.append(QFileInfo(file.path).canonicalFilePath());
    for (const QString& source : sources()) {
        const QFileInfo target(output.filePath(source));
        if (target.exists() && inputs.contains(target.canonicalFilePath()))
            return QStringLiteral("%1: is to be packed, and would be overwritten. Name another "
                                  "folder with -o.")
                .arg(target.filePath());
    }
    const QString folder = QDir(m_Request.folderPath).canonicalPath() + QLatin1Char('/');
    const bool isInside = output.canonicalPath().startsWith(folder);
    if (isInside && !output.exists(unfinishedMark()) &&
        !listLanguageFiles(output.path(), fault).isEmpty())
        return QStringLiteral("'%1' is in the folder that is to be packed, and holds language "
                              "files, which could be its short texts. Name another folder with -o.")
            .arg(m_Request.outputPath);
    return fault;
}

QString FolderPack::findForeignFile() const
{
    QString fault;
    const QStringList own = sources();
    QStringList folders = {QString()};
    if (!m_Request.shortFolder.isEmpty())
        folders.append(m_Request.shortFolder + QLatin1Char('/'));
    for (const QString& prefix : qAsConst(folders)) {
        const QString path = QDir(m_Request.outputPath).filePath(prefix);
        if (!QDir(path).exists())
            continue;
        const QFileInfoList entries = listLanguageFiles(path, fault);
        for (const QFileInfo& there : entries) {
            if (!own.contains(prefix + there.fileName()))
                return QStringLiteral("%1: is not of this pack and would be loaded with it. Remove "
                                      "it.")
                    .arg(there.filePath());
        }
    }
    return fault;
}

QStringList FolderPack::sources() const
{
    QStringList files;
    for (const CatalogFile& file : m_Catalog.files()) {
        if (file.isLoaded && isWanted(file.language))
            files.append(file.file);
    }
    return files;
}

QStringList FolderPack::languages() const
{
    QStringList keys;
    for (const CatalogFile& file : m_Catalog.files()) {
        if (file.isLoaded && !file.isShort && isWanted(file.language))
            keys.append(file.language);
    }
    return keys;
}

const CatalogFile* FolderPack::find(const QString& source) const
{
    const auto& files = m_Catalog.files();
    const auto file = std::find_if(files.cbegin(), files.cend(),
                                   [&](const CatalogFile& one) { return one.file == source; });
    return file == files.cend() ? nullptr : &*file;
}

QString FolderPack::pack(const QString& source)
{
    if (!m_Packed) {
        const QFileInfo output(QDir::cleanPath(m_Request.outputPath));
        m_Packed = std::make_unique<QTemporaryDir>(
            nearestFolder(output).filePath(QStringLiteral(".%1.XXXXXX").arg(output.fileName())));
    }
    if (!m_Packed->isValid()) // its path is empty: that would be the working directory
        return notWritten(m_Request.outputPath, m_Packed->errorString());
    const QByteArray bytes = find(source)->document.tree().bytes();
    // As the library reads it: in text mode, which knows no carriage returns.
    const QByteArray text = QByteArray(bytes).replace('\r', QByteArray());
    const QByteArray packedBytes =
        packed(QJsonDocument::fromJson(text).object(), m_Request.comments);

    QFile file(QDir(packedPath()).filePath(source));
    QDir().mkpath(QFileInfo(file).path());
    if (!file.open(QIODevice::WriteOnly) || file.write(packedBytes) != packedBytes.size() ||
        !file.flush())
        return notWritten(file.fileName(), file.errorString());
    m_Files.append({source, bytes.size(), packedBytes.size()});
    return QString();
}

QString FolderPack::packedPath() const
{
    return m_Packed ? m_Packed->path() : QString();
}

QString FolderPack::unfinishedMark()
{
    return QStringLiteral(".textmanager-unfinished-pack");
}

QString FolderPack::publish()
{
    const QDir output(m_Request.outputPath);
    QFile mark(output.filePath(unfinishedMark()));
    if (!QDir().mkpath(output.path()))
        return notWritten(output.path(), QString::fromLocal8Bit(std::strerror(errno)));
    if (!mark.open(QIODevice::WriteOnly))
        return notWritten(mark.fileName(), mark.errorString());
    const QString fault = putInPlace();
    if (fault.isEmpty() && !mark.remove())
        return notWritten(mark.fileName(), mark.errorString());
    return fault;
}

QString FolderPack::putInPlace() const
{
    // The newest of the files that went into it, so that the same files make the same pack; to the
    // nanosecond, else Make would find the pack older than they are.
    timespec newest = {};
    for (const PackedFile& file : qAsConst(m_Files))
        newest = std::max(newest, modificationTimeOf(find(file.file)->path), isEarlier);
    const timespec times[] = {{0, UTIME_OMIT}, newest};

    for (const PackedFile& file : qAsConst(m_Files)) {
        const QString from = QDir(packedPath()).filePath(file.file);
        const QString to = QDir(m_Request.outputPath).filePath(file.file);
        QFile packedFile(from);
        if (!packedFile.open(QIODevice::ReadWrite))
            return notWritten(from, packedFile.errorString());
        if (::futimens(packedFile.handle(), times) != 0 || ::fsync(packedFile.handle()) != 0)
            return notWritten(from, QString::fromLocal8Bit(std::strerror(errno)));
        packedFile.close();
        if (!QDir().mkpath(QFileInfo(to).path()) ||
            std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) !=
                0)
            return notWritten(to, QString::fromLocal8Bit(std::strerror(errno)));
    }
    return QString();
}
