#pragma once

#include "FileStamp_p.h"

#include <QFile>
#include <QString>

#include <optional>

/**
 * A regular file, opened for reading. Nothing else is opened, such as a FIFO or a device, which may
 * keep the reader waiting for ever or never come to an end; and opening does not wait.
 */
class RegularFile
{
public:
    /** Whether there is such a file, also at the end of a link, and it could be opened. */
    bool open(const QString& path);
    /** What can be read; that an error of the disk cut it off is told by lastingStamp() alone. */
    QByteArray readAll();

    /**
     * What the file is known by as long as nobody changes it; taken when it was opened. Nothing
     * when it was written a moment ago, when its file system does not tell reliably, and when it
     * could not be read to its end: the next time it may be.
     */
    const std::optional<FileStamp>& lastingStamp() const { return m_LastingStamp; }

private:
    QFile m_File;
    std::optional<FileStamp> m_LastingStamp;
};
