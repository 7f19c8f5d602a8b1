#pragma once

#include <QFileInfoList>
#include <QString>

/**
 * All that a text manager tries to load from a language folder, folders of such names among it.
 *
 * @param fault receives, unless it holds one already, why the list is not whole, as a sentence. To
 * go on with a part would leave languages out without a word.
 */
QFileInfoList listLanguageFiles(const QString& folderPath, QString& fault);
