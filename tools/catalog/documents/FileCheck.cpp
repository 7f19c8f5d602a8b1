#include "FileCheck.h"

#include "PropertyManagerConst.h"

#include <QDir>

QFileInfoList listLanguageFiles(const QString& folderPath)
{
    const QStringList nameFilters = {QLatin1Char('*') +
                                     PropertyManagerConst::getLanguageFileExtension()};
    return QDir(folderPath).entryInfoList(nameFilters);
}

QString findFolderFault(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir() && info.isReadable())
        return QString();
    const QString reason = !info.exists()  ? QStringLiteral("there is no such folder.")
                           : !info.isDir() ? QStringLiteral("it is no folder.")
                                           : QStringLiteral("it may not be read.");
    return QStringLiteral("cannot read language files in '%1': %2").arg(path, reason);
}
