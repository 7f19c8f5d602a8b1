#pragma once

#include "BaseTextRecord.h"

#include <QByteArray>
#include <QLockFile>
#include <QString>

/**
 * Holds the record of a language folder for one change: reads it under a lock, and puts the changed
 * one in its place, whole or not at all.
 */
class BaseTextRecordFile
{
public:
    explicit BaseTextRecordFile(const QString& folderPath);

    /** Why the record cannot be kept, with the place of it; empty when it can. */
    const QString& fault() const { return m_StrFault; }
    BaseTextRecord& record() { return m_Record; }

    /** Writes the record if it has changed. @return whether the file is as the record; why not is
     * in fault(). */
    bool save();

private:
    QString m_StrPath;
    QString m_StrFault;
    QLockFile m_Lock;
    QByteArray m_Bytes; ///< the record as it was read; empty when it was not begun
    BaseTextRecord m_Record;
};

/** Reads the record of a folder; one that is not begun where there is none. @param fault receives
 * why it cannot be read, with its place. */
BaseTextRecord readRecord(const QString& folderPath, QString& fault);
