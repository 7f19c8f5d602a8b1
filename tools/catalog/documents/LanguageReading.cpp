#include "LanguageReading.h"

#include "FileCheck.h"
#include "LanguageDocument.h"
#include "RegularFile.h"

#include "LanguageDefinitions.h"

#include <QFileInfo>
#include <QJsonDocument>

#include <cstring>

namespace
{

/** The bytes of a file; nothing where there is none, or a fault already. */
std::optional<QByteArray> readBytes(const QString& path, QString& fault)
{
    if (path.isEmpty() || !fault.isEmpty())
        return std::nullopt;
    FileContent content = readRegularFile(path);
    if (!content.bytes)
        fault = QStringLiteral("%1: cannot be read: %2.").arg(path, content.error);
    return content.bytes;
}

/** Parses a file that is to have a "Content". */
QJsonObject parseContent(const QByteArray& bytes, const QString& path, QString& fault)
{
    const QJsonObject document = parseLanguage(bytes);
    if (!document.contains(LanguageDefinitions::getJsonContentName())) {
        const QVector<Finding> faults = LanguageDocument(bytes).findFaults();
        const Finding first = faults.isEmpty() ? Finding() : faults.first();
        fault = QStringLiteral("%1:%2:%3: %4")
                    .arg(path, QString::number(first.place.line),
                         QString::number(first.place.column), first.reason);
    }
    return document;
}

} // namespace

QStringList listLanguages(const QString& folderPath)
{
    QStringList languages;
    const QFileInfoList entries = listLanguageFiles(folderPath);
    for (const QFileInfo& entry : entries) {
        if (entry.isFile())
            languages.append(entry.baseName());
    }
    languages.removeDuplicates();
    return languages;
}

QString findLanguageFile(const QString& folderPath, const QString& language)
{
    QString path;
    const QFileInfoList entries = listLanguageFiles(folderPath);
    for (const QFileInfo& entry : entries) {
        if (entry.isFile() && entry.baseName() == language)
            path = entry.filePath(); // of several, a text manager keeps the last one
    }
    return path;
}

QJsonObject parseLanguage(QByteArray bytes)
{
    // As QIODevice::Text does. The look is far shorter than a replacement that finds nothing.
    if (std::memchr(bytes.constData(), '\r', static_cast<std::size_t>(bytes.size())) != nullptr)
        bytes.replace('\r', QByteArray());
    return QJsonDocument::fromJson(bytes).object();
}

QJsonObject readLanguage(const QString& folderPath, const QString& language, QString& fault)
{
    const QString path = findLanguageFile(folderPath, language);
    const std::optional<QByteArray> bytes = readBytes(path, fault);
    return bytes ? parseContent(*bytes, path, fault) : QJsonObject();
}

LanguageTexts readTexts(const QString& folderPath, const QString& language, QString& fault)
{
    const QString path = findLanguageFile(folderPath, language);
    const std::optional<QByteArray> bytes = readBytes(path, fault);
    if (!bytes)
        return LanguageTexts();
    const JsonTree tree(*bytes);
    const bool hasContent =
        tree.isSound() &&
        tree.child(JsonTree::root, LanguageDefinitions::getJsonContentName()) != JsonTree::none;
    // Qt, and so a text manager, takes some files that are no sound trees.
    return hasContent ? LanguageTexts(tree) : LanguageTexts(parseContent(*bytes, path, fault));
}
