#pragma once

#include <QFileInfoList>
#include <QString>

/** All that a text manager tries to load from a language folder, folders of such names among it. */
QFileInfoList listLanguageFiles(const QString& folderPath);
