#pragma once

#include <QByteArray>
#include <QFileInfoList>
#include <QString>
#include <QVector>

#include <optional>

/** A file that a text manager silently leaves out, and why. */
struct FileFinding {
    QString path;
    int line = 0;   ///< from 1; 0 when the file as a whole is meant
    int column = 0; ///< in characters, from 1; 0 when the file as a whole is meant
    QString fault;  ///< what is wrong, and what to do about it

    /** "path:line:column: fault". */
    QString toString() const;
};

/** Why the library does not take a file with this content; nothing when it does. */
std::optional<FileFinding> findFault(const QString& path, const QByteArray& bytes);

/** All that a text manager tries to load from a language folder, folders of such names among it. */
QFileInfoList listLanguageFiles(const QString& folderPath);

/**
 * The files of a language folder that a text manager leaves out without a word: unreadable,
 * malformed, without "Content", or replaced by another file of the same language.
 */
QVector<FileFinding> findLeftOutFiles(const QString& folderPath);
