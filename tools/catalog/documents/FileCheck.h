#pragma once

#include <QFileInfoList>
#include <QString>

/** All that a text manager tries to load from a language folder, folders of such names among it. */
QFileInfoList listLanguageFiles(const QString& folderPath);

/** Why there is no folder to read at @p path, as a sentence; empty when there is. */
QString findFolderFault(const QString& path);
