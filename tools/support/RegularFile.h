#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

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
