#include "LanguageReading.h"

#include "FileCheck.h"
#include "LanguageDocument.h"
#include "RegularFile.h"

#include "LanguageDefinitions.h"

#include <QFileInfo>
#include <QJsonDocument>

#include <cstring>

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
    if (path.isEmpty() || !fault.isEmpty())
        return QJsonObject();
    const FileContent content = readRegularFile(path);
    if (!content.bytes) {
        fault = QStringLiteral("%1: cannot be read: %2.").arg(path, content.error);
        return QJsonObject();
    }
    const QJsonObject document = parseLanguage(*content.bytes);
    if (!document.contains(LanguageDefinitions::getJsonContentName())) {
        const QVector<Finding> faults = LanguageDocument(*content.bytes).findFaults();
        const Finding first = faults.isEmpty() ? Finding() : faults.first();
        fault = QStringLiteral("%1:%2:%3: %4")
                    .arg(path, QString::number(first.place.line),
                         QString::number(first.place.column), first.reason);
    }
    return document;
}
