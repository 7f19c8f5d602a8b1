#pragma once

#include "LanguageTexts.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

// Reads single languages of a folder, where opening all of it would be too much.

/** The keys of all languages in a folder, in the order of their files. */
QStringList listLanguages(const QString& folderPath);

/** The file that a text manager answers with for a language; empty when there is none. */
QString findLanguageFile(const QString& folderPath, const QString& language);

/** The document that a text manager makes of a file's bytes; an empty one when they are no JSON. */
QJsonObject parseLanguage(QByteArray bytes);

/**
 * Reads the document of a language as a text manager does.
 *
 * @param fault receives why it cannot be read, with its place; an object that is not there is none.
 * What it holds already stays, and nothing is read then.
 */
QJsonObject readLanguage(const QString& folderPath, const QString& language, QString& fault);

/** The texts of a language, read as readLanguage() does. */
LanguageTexts readTexts(const QString& folderPath, const QString& language, QString& fault);
