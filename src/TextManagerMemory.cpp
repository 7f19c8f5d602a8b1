#include "TextManagerMemory_p.h"

#include "LanguageDefinitions.h"

#include <iterator>
#include <utility>

std::optional<QJsonObject> TextManagerMemory::readFile(const QString& folderPath,
                                                       const QString& filePath, bool isRemembered)
{
    const LanguageFile known = m_Folders.value(folderPath).value(filePath);
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
        m_Folders[folderPath].insert(filePath, read);
    return read.document;
}

void TextManagerMemory::keepOnlyFiles(const QString& folderPath, const QStringList& filePaths)
{
    Files& files = m_Folders[folderPath];
    const bool haveSomeVanished = files.size() != filePaths.size(); // what is there is remembered
    for (auto file = files.begin(); haveSomeVanished && file != files.end();)
        file = filePaths.contains(file.key()) ? std::next(file) : files.erase(file);
    if (files.isEmpty())
        m_Folders.remove(folderPath);
}

std::optional<QJsonObject> TextManagerMemory::parseUnlessKnown(const QByteArray& bytes,
                                                               const LanguageFile::Digest& digest)
{
    for (const Files& files : std::as_const(m_Folders)) {
        for (const LanguageFile& file : files) {
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
