#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

// Reads single languages of a folder, where opening all of it would be too much.

/** The keys of all languages in a folder, in the order of their files. @param fault as for
 * listLanguageFiles(). */
QStringList listLanguages(const QString& folderPath, QString& fault);
/** Those that could be listed: enough to suggest one of them. */
QStringList listLanguages(const QString& folderPath);

/**
 * Reads the document of a language as a text manager does.
 *
 * @param fault receives why it cannot be read, with its place; an object that is not there is none.
 * What it holds already stays, and nothing is read then.
 */
QJsonObject readLanguage(const QString& folderPath, const QString& language, QString& fault);
