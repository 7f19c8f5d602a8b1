#include "FileCheck.h"

#include "RegularFile.h"

#include "PropertyManagerConst.h"

#include <QDir>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <sys/stat.h>

namespace
{

/** Why a name is not listed that Qt left out; empty when it is not to be: it lists no links that
 * lead nowhere, and no FIFOs and devices, but says nothing either of what it cannot look at. */
QString whyMissed(const QString& path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) == 0)
        return S_ISREG(status.st_mode) || S_ISDIR(status.st_mode)
                   ? QString::fromLocal8Bit(std::strerror(EIO))
                   : QString();
    const bool isNoFile = errno == ENOENT || errno == ELOOP || errno == EACCES || errno == ENOTDIR;
    return isNoFile ? QString() : QString::fromLocal8Bit(std::strerror(errno));
}

/** Why there are more names than Qt has listed: it takes an error for the end of the folder. */
QString findMissed(const FolderNames& all, const QFileInfoList& listed, const QDir& folder)
{
    const QString extension = PropertyManagerConst::getLanguageFileExtension();
    QSet<QByteArray> listedNames;
    for (const QFileInfo& entry : listed)
        listedNames.insert(QFile::encodeName(entry.fileName()));
    for (const QByteArray& name : all.names) {
        const QString shown = QFile::decodeName(name);
        if (name.startsWith('.') || listedNames.contains(name) ||
            QFile::encodeName(shown) != name || !shown.endsWith(extension, Qt::CaseInsensitive))
            continue;
        const QString reason = whyMissed(folder.filePath(shown));
        if (!reason.isEmpty())
            return reason;
    }
    return all.error;
}

} // namespace

QFileInfoList listLanguageFiles(const QString& folderPath, QString& fault)
{
    const QStringList nameFilters = {QLatin1Char('*') +
                                     PropertyManagerConst::getLanguageFileExtension()};
    const QDir folder(folderPath);
    const FolderNames all = readFolder(folder.path()); // first: what comes meanwhile is not missed
    const QFileInfoList listed = folder.entryInfoList(nameFilters);
    const QString reason = findMissed(all, listed, folder);
    if (fault.isEmpty() && !reason.isEmpty())
        fault = QStringLiteral("the folder '%1' cannot be read whole: %2.").arg(folderPath, reason);
    return listed;
}
