#pragma once

#include "LanguageFileEditor.h"
#include "LanguageFolder.h"

#include <memory>

// Opens folders and language files for commands; what is wrong with them is a message.

/** Whether there is a folder to read at @p path; a message says what is there if not. */
bool checkFolder(const QString& path);

/**
 * Loads the folder and reports the files that are left out.
 *
 * @param leftOut receives them when it is given.
 * @return null, after a message, when there is no such folder or no such short-text folder.
 */
std::unique_ptr<LanguageFolder> openFolder(const QString& path,
                                           const QString& shortFolder = QString(),
                                           QVector<Finding>* leftOut = nullptr);

/** How a finding is shown: "path:line:column: reason". */
QString describeFinding(const Finding& finding, const QString& folderPath);

/** LanguageFileEditor::open(); null after a message. */
std::unique_ptr<LanguageFileEditor> openEditor(const QString& folderPath, const QString& language);
/** LanguageFileEditor::create(); null after a message. */
std::unique_ptr<LanguageFileEditor> createEditor(const QString& folderPath,
                                                 const QString& language);
/** Saves. @return whether that was done; a message says why not. */
bool saveEditor(LanguageFileEditor& editor);
