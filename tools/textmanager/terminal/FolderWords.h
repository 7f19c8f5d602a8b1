#pragma once

#include <QString>
#include <QStringList>

// What a folder of language files has that a person may type. Nothing is said of its faults.

/** The keys of the languages in the folder; none when it cannot be read. */
QStringList languagesOf(const QString& folderPath);

/** The URLs of all its languages, each once. */
QStringList urlsOf(const QString& folderPath);
