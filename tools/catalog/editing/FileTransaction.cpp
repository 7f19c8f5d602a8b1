#include "FileTransaction.h"

#include "LockedFile.h"
#include "ReplacementFile.h"

#include <algorithm>
#include <csignal>
#include <map>

namespace
{

/** Why a file, and with it all others, is not saved. */
QString refusal(const LockedFile& file, const QString& reason)
{
    return QStringLiteral("%1: cannot be saved: %2. The file is as it was.")
        .arg(file.path(), reason);
}

} // namespace

FileTransaction::FileTransaction() = default;
FileTransaction::~FileTransaction() = default;
FileTransaction::FileTransaction(FileTransaction&& other) noexcept = default;
FileTransaction& FileTransaction::operator=(FileTransaction&& other) noexcept = default;

QString FileTransaction::lock(const QStringList& paths)
{
    std::map<QString, std::unique_ptr<LockedFile>> files;
    for (const QString& path : paths) {
        auto file = std::make_unique<LockedFile>(path);
        const QString realPath = file->realPath();
        const bool isNew = files.emplace(realPath, std::move(file)).second;
        if (!isNew)
            return QStringLiteral("%1: is another name of %2, which is to be edited, too. Remove "
                                  "one of the two.")
                .arg(path, files.at(realPath)->path());
    }
    for (auto& file : files) {
        const QString fault = file.second->open();
        if (!fault.isEmpty())
            return fault;
        m_Files.push_back(std::move(file.second));
    }
    return QString();
}

std::optional<QByteArray> FileTransaction::bytesOf(const QString& path) const
{
    return find(path)->bytes();
}

void FileTransaction::write(const QString& path, const QByteArray& bytes)
{
    find(path)->wanted = bytes;
}

bool FileTransaction::isChanged() const
{
    return std::any_of(m_Files.begin(), m_Files.end(),
                       [](const auto& file) { return file->isChanged(); });
}

QString FileTransaction::save()
{
    return saveAll({this});
}

QString FileTransaction::saveAll(const std::vector<FileTransaction*>& transactions)
{
    // A limit on the size of files is to be an error like a full disk, not the end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
    std::vector<LockedFile*> files;
    std::vector<std::unique_ptr<ReplacementFile>> replacements;
    for (const FileTransaction* transaction : transactions) {
        for (const auto& file : transaction->m_Files) {
            if (file->isChanged())
                files.push_back(file.get());
        }
    }
    for (LockedFile* file : files) {
        replacements.push_back(std::make_unique<ReplacementFile>(file->realPath()));
        const QString fault = replacements.back()->prepare(*file->wanted);
        if (!fault.isEmpty())
            return refusal(*file, fault);
    }
    for (const LockedFile* file : files) {
        if (!file->isAsRead())
            return refusal(*file, QStringLiteral("another program has changed it in the meantime; "
                                                 "try again"));
    }
    for (std::size_t index = 0; index < files.size(); ++index) {
        const QString fault = replacements[index]->putInPlace();
        if (fault.isEmpty())
            continue;
        const QString others = index == 0
                                   ? QString()
                                   : QStringLiteral(" %1 files before it are saved; do the same "
                                                    "again.")
                                         .arg(index);
        return refusal(*files[index], fault) + others;
    }
    for (std::size_t index = 0; index < files.size(); ++index) {
        const QString fault = replacements[index]->syncFolder();
        if (!fault.isEmpty())
            return QStringLiteral("%1: is saved, but may be lost if the power fails now: %2.")
                .arg(files[index]->path(), fault);
    }
    return QString();
}

LockedFile* FileTransaction::find(const QString& path) const
{
    const auto found = std::find_if(m_Files.begin(), m_Files.end(),
                                    [&](const auto& file) { return file->path() == path; });
    return found == m_Files.end() ? nullptr : found->get();
}
