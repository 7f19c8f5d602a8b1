#include "FileCheck.h"

#include "JsonParser.h"

#include "LanguageDefinitions.h"

#include "PropertyManagerConst.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

namespace
{

/** Why the library does not take the file; nothing when it does. */
std::optional<FileFinding> findFault(const QString& path)
{
    QFile file(path);
    // In text mode, which gives the bytes that the library parses.
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return FileFinding{path, 0, 0,
                           QStringLiteral("cannot be read: %1. The file is left out; check what it "
                                          "is and who may read it.")
                               .arg(file.errorString())};
    return findFault(path, file.readAll());
}

} // namespace

std::optional<FileFinding> findFault(const QString& path, const QByteArray& bytes)
{
    QJsonDocument document;
    if (const auto fault = parseJson(bytes, document))
        return FileFinding{
            path, fault->line, fault->column,
            QStringLiteral("%1. The file is left out; correct it there.").arg(fault->reason)};
    if (document.object().contains(LanguageDefinitions::getJsonContentName()))
        return std::nullopt;
    const QString found = document.isObject()
                              ? QStringLiteral("an object with the keys (%1)")
                                    .arg(document.object().keys().join(QStringLiteral(", ")))
                              : QStringLiteral("an array");
    return FileFinding{path, 1, 1,
                       QStringLiteral("no language file: expected an object with \"%1\", found %2. "
                                      "The file is left out; put the texts below \"%1\", or move "
                                      "the file away.")
                           .arg(LanguageDefinitions::getJsonContentName(), found)};
}

QString FileFinding::toString() const
{
    if (line == 0)
        return QStringLiteral("%1: %2").arg(path, fault);
    return QStringLiteral("%1:%2:%3: %4").arg(path).arg(line).arg(column).arg(fault);
}

QFileInfoList listLanguageFiles(const QString& folderPath)
{
    const QStringList nameFilters = {QLatin1Char('*') +
                                     PropertyManagerConst::getLanguageFileExtension()};
    return QDir(folderPath).entryInfoList(nameFilters);
}

QVector<FileFinding> findLeftOutFiles(const QString& folderPath)
{
    QVector<FileFinding> findings;
    QMap<QString, QString> loadedPaths;
    const QFileInfoList entries = listLanguageFiles(folderPath);
    for (const QFileInfo& entry : entries) {
        if (const auto finding = findFault(entry.filePath())) {
            findings.append(*finding);
            continue;
        }
        const QString earlierPath = loadedPaths.value(entry.baseName());
        if (!earlierPath.isEmpty())
            findings.append({earlierPath, 0, 0,
                             QStringLiteral("replaced by %1, which has the same language key '%2'. "
                                            "Move one of them away.")
                                 .arg(entry.fileName(), entry.baseName())});
        loadedPaths.insert(entry.baseName(), entry.filePath());
    }
    return findings;
}
