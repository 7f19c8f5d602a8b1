#include "TextManagerMemory_p.h"

#include "LanguageDefinitions.h"
#include "RegularFile_p.h"

#include "PropertyManagerConst.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <utility>

namespace
{

/** @param hasDeadLink receives whether there is a link in the folder that leads nowhere. */
QVector<TextManagerMemory::FileName> listFolder(const QString& path, bool& hasDeadLink)
{
    // No dot between the star and the extension: every name that ends in the extension's text.
    const QStringList nameFilters = {QLatin1Char('*') +
                                     PropertyManagerConst::getLanguageFileExtension()};
    // The path is given to the constructor: QDir::setPath() would make nothing of an empty one,
    // which stands for the current directory here.
    const QDir folder(path);
    // With System come dead links, too, and devices and their like, which are left out.
    const QFileInfoList entries =
        folder.entryInfoList(nameFilters, QDir::AllEntries | QDir::System, QDir::NoSort);
    QVector<TextManagerMemory::FileName> fileNames;
    for (const QFileInfo& entry : entries) {
        if (entry.isFile() || entry.isDir())
            fileNames.append({entry.filePath(), entry.baseName()});
        else if (!entry.exists())
            hasDeadLink = true;
    }
    return fileNames;
}

} // namespace

QVector<TextManagerMemory::FileName> TextManagerMemory::listFiles(const QString& folderPath,
                                                                  bool isRemembered)
{
    const QString path = folderPath.isEmpty() ? QStringLiteral(".") : folderPath;
    const Folder known = m_Folders.value(folderPath);
    if (known.stamp && known.stamp == FileStamp::ofPath(path))
        return known.fileNames;
    const std::optional<FileStamp> stamp = FileStamp::lastingOfPath(path);
    bool hasDeadLink = false; // what it leads to can come without a change of this folder
    const QVector<FileName> fileNames = listFolder(folderPath, hasDeadLink);
    if (isRemembered)
        remember(folderPath, hasDeadLink ? std::nullopt : stamp, fileNames);
    return fileNames;
}

std::optional<QJsonObject> TextManagerMemory::readFile(const QString& folderPath,
                                                       const QString& filePath, bool isRemembered)
{
    const LanguageFile known = m_Folders.value(folderPath).files.value(filePath);
    if (known.stamp && known.stamp == FileStamp::ofPath(filePath))
        return known.document;

    LanguageFile read;
    RegularFile file;
    if (file.open(filePath)) {
        const QByteArray bytes = file.readAll();
        read.stamp = file.lastingStamp();
        read.digest = LanguageFile::digestOf(bytes);
        read.document = parseUnlessKnown(bytes, read.digest);
    }
    if (isRemembered)
        m_Folders[folderPath].files.insert(filePath, read);
    return read.document;
}

void TextManagerMemory::remember(const QString& folderPath, const std::optional<FileStamp>& stamp,
                                 const QVector<FileName>& fileNames)
{
    if (fileNames.isEmpty()) {
        m_Folders.remove(folderPath);
        return;
    }
    Folder& folder = m_Folders[folderPath];
    QMap<QString, LanguageFile> files;
    for (const FileName& name : fileNames) {
        const auto file = folder.files.constFind(name.path);
        if (file != folder.files.constEnd())
            files.insert(name.path, *file);
    }
    folder = {stamp, fileNames, files};
}

std::optional<QJsonObject> TextManagerMemory::parseUnlessKnown(const QByteArray& bytes,
                                                               const LanguageFile::Digest& digest)
{
    for (const Folder& folder : std::as_const(m_Folders)) {
        for (const LanguageFile& file : folder.files) {
            if (file.digest == digest)
                return file.document;
        }
    }
    forgetAnswers(); // else the old documents would live on beside the new ones
    std::optional<QJsonObject> document = LanguageFile::parse(bytes);
    if (document && !document->contains(LanguageDefinitions::getJsonContentName()))
        document = QJsonObject(); // no language file; nobody asks for more of it
    return document;
}

/** Lets go of the documents that answers were read from, too. */
void TextManagerMemory::forgetAnswers()
{
    texts.clear();
    shortTexts.clear();
}
