#include "FileCheck.h"

#include "LanguageDefinitions.h"

#include "PropertyManagerConst.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>

namespace
{

struct Position {
    int line = 1;
    int column = 1;
};

/** Where in a text the byte at @p offset stands. */
Position positionOf(const QByteArray& bytes, int offset)
{
    const QByteArray before = bytes.left(offset);
    const int lineStart = before.lastIndexOf('\n') + 1;
    return {before.count('\n') + 1, QString::fromUtf8(before.mid(lineStart)).size() + 1};
}

/** Why the library does not take the file; nothing when it does. */
std::optional<FileFinding> findFault(const QString& path)
{
    QFile file(path);
    // Opened as the library opens it, so that both see the same bytes.
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return FileFinding{path, 0, 0,
                           QStringLiteral("cannot be read: %1. The file is left out; check what it "
                                          "is and who may read it.")
                               .arg(file.errorString())};
    const QByteArray bytes = file.readAll();

    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError) {
        FileFinding finding = describeMalformedJson(path, bytes, error);
        finding.fault += QStringLiteral(" The file is left out; correct it there.");
        return finding;
    }
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

} // namespace

QString FileFinding::toString() const
{
    if (line == 0)
        return QStringLiteral("%1: %2").arg(path, fault);
    return QStringLiteral("%1:%2:%3: %4").arg(path).arg(line).arg(column).arg(fault);
}

QVector<FileFinding> findLeftOutFiles(const QString& folderPath)
{
    const QStringList nameFilters = {QLatin1Char('*') +
                                     PropertyManagerConst::getLanguageFileExtension()};
    QVector<FileFinding> findings;
    QMap<QString, QString> loadedPaths;
    const QFileInfoList entries = QDir(folderPath).entryInfoList(nameFilters);
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

FileFinding describeMalformedJson(const QString& path, const QByteArray& bytes,
                                  const QJsonParseError& qtError)
{
    // Qt's errors say little more than that there is one, so a parser that names what it found and
    // what it expected is asked first.
    QString reason = qtError.errorString();
    int offset = qtError.offset - 1; // Qt's is behind the character that it refused
    try {
        [[maybe_unused]] const auto parsed = nlohmann::json::parse(bytes.cbegin(), bytes.cend());
    } catch (const nlohmann::json::parse_error& error) {
        // "[json.exception...] parse error at line L, column C: what was found and expected"
        reason = QString::fromUtf8(error.what()).section(QStringLiteral(": "), 1);
        offset = static_cast<int>(error.byte) - 1;
    }
    const Position position = positionOf(bytes, std::clamp(offset, 0, bytes.size()));
    return {path, position.line, position.column,
            QStringLiteral("malformed JSON: %1.").arg(reason)};
}
