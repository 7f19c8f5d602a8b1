#include "LanguageReading.h"

#include "FileCheck.h"
#include "LanguageDocument.h"
#include "RegularFile.h"
#include "TextKey.h"

#include "LanguageDefinitions.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>

QStringList listLanguages(const QString& folderPath)
{
    QStringList languages;
    const QFileInfoList entries = listLanguageFiles(folderPath);
    for (const QFileInfo& entry : entries) {
        if (entry.isFile())
            languages.append(entry.baseName());
    }
    removeRepeated(languages);
    return languages;
}

bool isSubFolder(const QString& name)
{
    const QString path = QDir::cleanPath(name);
    return !path.isEmpty() && path != QLatin1String(".") && QDir::isRelativePath(path) &&
           path != QLatin1String("..") && !path.startsWith(QLatin1String("../"));
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
