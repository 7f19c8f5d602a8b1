#include "BaseTextRecordFile.h"

#include "RegularFile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <unistd.h>

namespace
{

QString recordPath(const QString& folderPath)
{
    return QDir(folderPath).filePath(BaseTextRecord::fileName());
}

} // namespace

BaseTextRecord readRecord(const QString& folderPath, QString& fault)
{
    BaseTextRecord record;
    const QString path = recordPath(folderPath);
    if (!QFileInfo::exists(path))
        return record;
    const FileContent content = readRegularFile(path);
    if (!content.bytes)
        fault = QStringLiteral("%1: cannot be read: %2.").arg(path, content.error);
    else if (const auto recordFault = record.read(*content.bytes))
        fault = QStringLiteral("%1:%2:%3: %4")
                    .arg(path)
                    .arg(recordFault->place.line)
                    .arg(recordFault->place.column)
                    .arg(recordFault->reason);
    return record;
}

BaseTextRecordFile::BaseTextRecordFile(const QString& folderPath)
    : m_StrPath(recordPath(folderPath))
    , m_Lock(m_StrPath + QStringLiteral(".lock"))
{
    constexpr int patienceInMilliseconds = 3000;
    if (!m_Lock.tryLock(patienceInMilliseconds))
        m_StrFault = QStringLiteral("%1: cannot be locked. Try again later, or see who may write "
                                    "there.")
                         .arg(m_StrPath);
    else
        m_Record = readRecord(folderPath, m_StrFault);
    if (m_Record.isBegun())
        m_Bytes = m_Record.bytes();
}

bool BaseTextRecordFile::save()
{
    if (!m_StrFault.isEmpty() || !m_Record.isBegun())
        return m_StrFault.isEmpty();
    const QByteArray bytes = m_Record.bytes();
    if (bytes == m_Bytes)
        return true;
    QSaveFile file(m_StrPath);
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
                           file.flush() && ::fsync(file.handle()) == 0 && file.commit();
    if (!isWritten)
        m_StrFault = QStringLiteral("%1: cannot be saved: %2.").arg(m_StrPath, file.errorString());
    return isWritten;
}
