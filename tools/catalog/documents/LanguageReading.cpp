#include "LanguageReading.h"

#include "FileCheck.h"
#include "LanguageDocument.h"
#include "RegularFile.h"

#include "LanguageDefinitions.h"

#include <QFileInfo>
#include <QJsonDocument>

namespace
{

/** The file that a text manager answers with for a language; empty when there is none. */
QString findLanguageFile(const QString& folderPath, const QString& language, QString& fault)
{
    QString path;
    const QFileInfoList entries = listLanguageFiles(folderPath, fault);
    for (const QFileInfo& entry : entries) {
        if (entry.isFile() && entry.baseName() == language)
            path = entry.filePath(); // of several, a text manager keeps the last one
    }
    return path;
}

} // namespace

QStringList listLanguages(const QString& folderPath)
{
    QString fault;
    return listLanguages(folderPath, fault);
}

QStringList listLanguages(const QString& folderPath, QString& fault)
{
    QStringList languages;
    const QFileInfoList entries = listLanguageFiles(folderPath, fault);
    for (const QFileInfo& entry : entries) {
        if (entry.isFile())
            languages.append(entry.baseName());
    }
    languages.removeDuplicates();
    return languages;
}

QJsonObject readLanguage(const QString& folderPath, const QString& language, QString& fault)
{
    const QString path = findLanguageFile(folderPath, language, fault);
    if (path.isEmpty() || !fault.isEmpty())
        return QJsonObject();
    const FileContent content = readRegularFile(path);
    if (!content.bytes) {
        fault = QStringLiteral("%1: cannot be read: %2.").arg(path, content.error);
        return QJsonObject();
    }
    QByteArray bytes = *content.bytes;
    if (bytes.contains('\r')) // which a text manager does not see
        bytes.replace('\r', QByteArray());
    const QJsonObject document = QJsonDocument::fromJson(bytes).object();
    if (!document.contains(LanguageDefinitions::getJsonContentName())) {
        const QVector<Finding> faults = LanguageDocument(*content.bytes).findFaults();
        const Finding first = faults.isEmpty() ? Finding() : faults.first();
        fault = QStringLiteral("%1:%2:%3: %4")
                    .arg(path, QString::number(first.place.line),
                         QString::number(first.place.column), first.reason);
    }
    return document;
}
