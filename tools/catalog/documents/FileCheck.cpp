#include "FileCheck.h"

#include "PropertyManagerConst.h"

#include <QDir>

QFileInfoList listLanguageFiles(const QString& folderPath)
{
    const QStringList nameFilters = {QLatin1Char('*') +
                                     PropertyManagerConst::getLanguageFileExtension()};
    return QDir(folderPath).entryInfoList(nameFilters);
}
