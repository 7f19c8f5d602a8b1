#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

/** What reading a file gave: its bytes, or why there are none. */
struct FileContent {
    std::optional<QByteArray> bytes;
    QString error; ///< such as "No such file or directory"; empty when there are bytes
};

/**
 * Reads a regular file, links to one too. Whether it is one is seen on the open file, and opening
 * never waits: a FIFO or a device in its place is an error.
 */
FileContent readRegularFile(const QString& path);

/** Whether nothing is at @p path. What cannot be looked at, since the disk fails, is not nothing.
 */
bool isNothingAt(const QString& path);

/** The names in a folder. */
struct FolderNames {
    std::vector<QByteArray> names; ///< as the file system has them, in ascending order
    QString error;                 ///< why they are not all; empty when they are
};
FolderNames readFolder(const QString& path);
