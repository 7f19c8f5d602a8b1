#include "ManifestFile.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>

namespace
{

void warn(const QString& path, const QString& fault)
{
    qWarning().noquote() << path + QLatin1String(": ") + fault +
                                QLatin1String(". The configuration service is asked in its place; "
                                              "correct the file.");
}

/** "LINE:COLUMN", in characters, of an offset in bytes. */
QString place(const QByteArray& bytes, int offset)
{
    const QByteArray before = bytes.left(offset);
    const QByteArray line = before.mid(before.lastIndexOf('\n') + 1);
    return QStringLiteral("%1:%2")
        .arg(before.count('\n') + 1)
        .arg(QString::fromUtf8(line).size() + 1);
}

std::optional<QByteArray> readFile(const QString& path)
{
    const QFileInfo info(path);
    QFile file(path);
    if (info.exists() && !info.isFile()) // opening a pipe would wait
        warn(path, QStringLiteral("is no file"));
    else if (!file.open(QIODevice::ReadOnly))
        warn(path, QStringLiteral("cannot be read: ") + file.errorString());
    else
        return file.readAll();
    return std::nullopt;
}

std::optional<QJsonObject> readObject(const QString& path)
{
    const std::optional<QByteArray> bytes = readFile(path);
    if (!bytes)
        return std::nullopt;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(*bytes, &error);
    if (error.error != QJsonParseError::NoError)
        warn(path + QLatin1Char(':') + place(*bytes, error.offset),
             QLatin1String("malformed JSON: ") + error.errorString());
    else if (!document.isObject())
        warn(path + QLatin1String(":1:1"), QStringLiteral("expected an object, found an array"));
    else
        return document.object();
    return std::nullopt;
}

} // namespace

std::optional<StatusDisplay> readStatusDisplayFromFile()
{
    const QString chosenPath = qEnvironmentVariable("TEXTMANAGER_MANIFEST");
    const QString path =
        chosenPath.isEmpty() ? QStringLiteral("/etc/textmanager/manifest.json") : chosenPath;
    if (chosenPath.isEmpty() && !QFileInfo::exists(path))
        return std::nullopt;
    const std::optional<QJsonObject> manifest = readObject(path);
    const QString key = QStringLiteral("statusDisplay");
    if (!manifest || !manifest->contains(key))
        return std::nullopt;

    const QJsonValue display = manifest->value(key);
    const QJsonValue isAvailable = display[QStringLiteral("available")];
    const QJsonValue folder = display[QStringLiteral("folder")];
    if (isAvailable.isBool() && (folder.isString() || !isAvailable.toBool()))
        return StatusDisplay{isAvailable.toBool(), folder.toString()};
    warn(path, isAvailable.isBool()
                   ? QStringLiteral("statusDisplay/folder: expected a text")
                   : QStringLiteral("statusDisplay/available: expected true or false"));
    return std::nullopt;
}
