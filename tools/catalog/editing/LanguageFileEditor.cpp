#include "LanguageFileEditor.h"

#include "Console.h"
#include "FileCheck.h"
#include "JsonParser.h"
#include "LanguageFolder.h"
#include "RepeatedKey.h"

#include "PropertyManagerConst.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>
#include <QThread>

#include <cerrno>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr int lockPatienceInMilliseconds = 3000;
// What one that dies while it locks leaves behind names no process and is told by its age. It has
// to be less than the patience. One that lives keeps its lock, however old: it has the file locked
// in the kernel, too.
constexpr int staleLockInMilliseconds = 2000;

QString lastSystemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

bool isLanguageKey(const QString& language)
{
    // The key is what precedes the first dot of a file name.
    if (!language.isEmpty() && !language.contains(QLatin1Char('/')) &&
        !language.contains(QLatin1Char('.')))
        return true;
    printMessage(QStringLiteral("'%1' is no language key: give the name of the language file "
                                "without folder and extension, as in de_DE.")
                     .arg(language));
    return false;
}

/** The files whose texts a text manager would load under the key @p language. */
QStringList filesOfLanguage(const QString& folderPath, const QString& language)
{
    QStringList paths;
    const QFileInfoList entries = listLanguageFiles(folderPath);
    for (const QFileInfo& entry : entries) {
        if (entry.isFile() && entry.baseName() == language)
            paths.append(entry.filePath());
    }
    return paths;
}

QString newFilePath(const QString& folderPath, const QString& language)
{
    return QDir(folderPath)
        .filePath(language + QLatin1Char('.') + PropertyManagerConst::getLanguageFileExtension());
}

/** The one file of @p language; empty, after a message, when there is none or several. */
QString findFile(const QString& folderPath, const QString& language)
{
    const QStringList paths = filesOfLanguage(folderPath, language);
    if (paths.size() == 1)
        return paths.first();
    if (paths.isEmpty())
        printMessage(QStringLiteral("there is no language '%1': no file %2.\n"
                                    "'textmanager new %3 %1' starts it.")
                         .arg(language, newFilePath(folderPath, language), folderPath));
    else
        printMessage(QStringLiteral("there are %1 files of language '%2': %3. Move all but one of "
                                    "them away.")
                         .arg(paths.size())
                         .arg(language, paths.join(QStringLiteral(", "))));
    return QString();
}

/** Where a path leads: links are followed, so that they stay links when the file is replaced. */
QString realPathOf(const QString& filePath)
{
    const QString realPath = QFileInfo(filePath).canonicalFilePath();
    return realPath.isEmpty() ? filePath : realPath;
}

QString lockPathOf(const QString& realPath)
{
    const QFileInfo info(realPath);
    return info.dir().filePath(QStringLiteral(".%1.lock").arg(info.fileName()));
}

/** Leaves the file to its owner, and its permissions, also when someone else replaces it, as root.
 */
void keepOwnerAndPermissions(const QString& filePath, int newFile)
{
    struct stat old = {};
    if (::stat(QFile::encodeName(filePath).constData(), &old) != 0)
        return;
    // Only root may give a file away; for others it becomes theirs, as with any editor.
    [[maybe_unused]] const int ownerResult = ::fchown(newFile, old.st_uid, old.st_gid);
    // Those that QSaveFile takes over are what whoever runs this may do, which for root is all.
    constexpr mode_t permissionBits = 07777;
    [[maybe_unused]] const int result = ::fchmod(newFile, old.st_mode & permissionBits);
}

/** Writes all; on a full disk the first part fits, and only the next write tells why no more do. */
bool writeAll(QFileDevice& file, const QByteArray& bytes)
{
    qint64 written = 0;
    while (written < bytes.size()) {
        const qint64 count = file.write(bytes.constData() + written, bytes.size() - written);
        if (count <= 0)
            return false;
        written += count;
    }
    return file.flush();
}

/** Brings the renaming of a file in its folder to the disk. */
bool syncFolder(const QString& folderPath)
{
    const int folder =
        ::open(QFile::encodeName(folderPath).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return false;
    const bool isSynced = ::fsync(folder) == 0 || errno == EINVAL; // EINVAL: nothing to sync there
    const int error = errno;
    ::close(folder);
    errno = error;
    return isSynced;
}

/** Why a file that loads could not be saved without losing something; no fault when it can. */
std::optional<FileFinding> findLoss(const QString& path, const QByteArray& text)
{
    const std::optional<QString> repeatedKey = findRepeatedKey(text);
    if (!repeatedKey) {
        const JsonFault fault = describeMalformedJson(text, QJsonParseError());
        return FileFinding{path, fault.line, fault.column,
                           QStringLiteral("%1. A text manager loads the file all the same; correct "
                                          "it there before it is edited.")
                               .arg(fault.reason)};
    }
    if (repeatedKey->isEmpty())
        return std::nullopt;
    return FileFinding{
        path, 0, 0,
        QStringLiteral("the key %1 stands there twice, and only the last one counts. "
                       "Remove one of them before the file is edited.")
            .arg(*repeatedKey)};
}

} // namespace

std::unique_ptr<LanguageFileEditor> LanguageFileEditor::open(const QString& folderPath,
                                                             const QString& language)
{
    if (!LanguageFolder::checkFolder(folderPath) || !isLanguageKey(language))
        return nullptr;
    const QString filePath = findFile(folderPath, language);
    if (filePath.isEmpty())
        return nullptr;
    std::unique_ptr<LanguageFileEditor> editor(new LanguageFileEditor(filePath));
    return editor->lock() && editor->read() ? std::move(editor) : nullptr;
}

std::unique_ptr<LanguageFileEditor> LanguageFileEditor::create(const QString& folderPath,
                                                               const QString& language)
{
    if (!LanguageFolder::checkFolder(folderPath) || !isLanguageKey(language))
        return nullptr;
    const QString filePath = newFilePath(folderPath, language);
    std::unique_ptr<LanguageFileEditor> editor(new LanguageFileEditor(filePath));
    if (!editor->lock())
        return nullptr;
    const QStringList paths = filesOfLanguage(folderPath, language);
    if (paths.isEmpty() && editor->isFileAsRead())
        return editor;
    printMessage(QStringLiteral("the language '%1' is there already: %2.")
                     .arg(language, paths.isEmpty() ? filePath : paths.first()));
    return nullptr;
}

LanguageFileEditor::LanguageFileEditor(const QString& filePath)
    : m_StrFilePath(filePath)
    , m_StrRealPath(realPathOf(filePath))
    , m_Lock(lockPathOf(m_StrRealPath))
{
    m_Lock.setStaleLockTime(staleLockInMilliseconds);
}

bool LanguageFileEditor::lock()
{
    // A limit on the size of files is to be an error like a full disk, not the end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
    constexpr unsigned long pauseInMilliseconds = 10;
    const QDeadlineTimer deadline(lockPatienceInMilliseconds);
    while (!m_Lock.tryLock(0)) {
        if (m_Lock.error() != QLockFile::LockFailedError) {
            reportMissingLock();
            return false;
        }
        if (deadline.hasExpired()) {
            reportHolder();
            return false;
        }
        QThread::msleep(pauseInMilliseconds);
    }
    return true;
}

void LanguageFileEditor::reportMissingLock() const
{
    const QString reason = m_Lock.error() == QLockFile::PermissionError
                               ? QStringLiteral("you may not write in its folder")
                               : QStringLiteral("the disk may be full");
    printMessage(QStringLiteral("%1: cannot be edited: there can be no lock file %2, %3.")
                     .arg(m_StrFilePath, lockPathOf(m_StrRealPath), reason));
}

void LanguageFileEditor::reportHolder() const
{
    qint64 process = 0;
    QString host;
    QString program;
    m_Lock.getLockInfo(&process, &host, &program);
    printMessage(QStringLiteral("%1: is being edited by '%2', process %3 on %4. Nothing was "
                                "changed; try again later.")
                     .arg(m_StrFilePath, program)
                     .arg(process)
                     .arg(host));
}

bool LanguageFileEditor::read()
{
    QFile file(m_StrRealPath);
    if (!file.open(QIODevice::ReadOnly)) {
        printMessage(
            QStringLiteral("%1: cannot be read: %2.").arg(m_StrFilePath, file.errorString()));
        return false;
    }
    m_Bytes = file.readAll();
    // Parsed as the library reads it: in text mode, which knows no carriage returns.
    const QByteArray text = QByteArray(m_Bytes).replace('\r', QByteArray());
    std::optional<FileFinding> fault = findFault(m_StrFilePath, text);
    if (!fault)
        fault = findLoss(m_StrFilePath, text);
    if (fault) {
        printMessage(fault->toString());
        return false;
    }
    m_DocumentAsRead = QJsonDocument::fromJson(text).object();
    m_Document = m_DocumentAsRead;
    return true;
}

bool LanguageFileEditor::save()
{
    const bool isNew = m_Bytes.isNull();
    if (!isNew && m_Document == m_DocumentAsRead)
        return true;
    const QByteArray bytes = storedForm();
    if (QJsonDocument::fromJson(bytes).object() == m_Document)
        return replaceFile(bytes);
    printMessage(QStringLiteral("%1: cannot be saved: what would be written could not be read "
                                "again. The file is as it was.")
                     .arg(m_StrFilePath));
    return false;
}

bool LanguageFileEditor::replaceFile(const QByteArray& bytes)
{
    const auto refuse = [this](const QString& reason) {
        printMessage(QStringLiteral("%1: cannot be saved: %2. The file is as it was.")
                         .arg(m_StrFilePath, reason));
        return false;
    };
    QSaveFile file(m_StrRealPath);
    if (!file.open(QIODevice::WriteOnly))
        return refuse(file.errorString());
    keepOwnerAndPermissions(m_StrRealPath, file.handle());
    if (!writeAll(file, bytes))
        return refuse(file.errorString());
    if (::fsync(file.handle()) != 0)
        return refuse(lastSystemError());
    if (!isFileAsRead())
        return refuse(QStringLiteral("another program has changed it in the meantime; try again"));
    if (!file.commit())
        return refuse(file.errorString());
    if (syncFolder(QFileInfo(m_StrRealPath).path()))
        return true;
    printMessage(QStringLiteral("%1: is saved, but may be lost if the power fails now: %2.")
                     .arg(m_StrFilePath, lastSystemError()));
    return false;
}

bool LanguageFileEditor::isFileAsRead() const
{
    const QFileInfo info(m_StrRealPath);
    if (m_Bytes.isNull())
        return !info.exists() && !info.isSymLink();
    QFile file(m_StrRealPath);
    return file.open(QIODevice::ReadOnly) && file.readAll() == m_Bytes &&
           realPathOf(m_StrFilePath) == m_StrRealPath;
}

QByteArray LanguageFileEditor::storedForm() const
{
    QByteArray bytes = QJsonDocument(m_Document).toJson(QJsonDocument::Indented);
    // Line breaks in texts are escaped, so these are the ends of lines only.
    if (m_Bytes.contains("\r\n"))
        bytes.replace('\n', "\r\n");
    return bytes;
}
