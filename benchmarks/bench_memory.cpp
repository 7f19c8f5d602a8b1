// The memory of one text manager: a process of its own that loads, looks every text up once, and
// prints a JSON object.

#include "BenchmarkProgram.h"

#include <TextManagerBase.h>

#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace
{

/** A field of /proc/self/status in bytes. */
qint64 memory(const QByteArray& field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        qFatal("/proc/self/status cannot be read.");
    const QByteArrayList lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(field + ':'))
            return line.simplified().split(' ').at(1).toLongLong() * 1024;
    }
    qFatal("/proc/self/status has no %s.", field.constData());
}

qint64 residentMemory()
{
    return memory("VmRSS");
}

qint64 sizeOfFiles(const QString& folder)
{
    qint64 size = 0;
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        size += files.fileInfo().size();
    }
    return size;
}

} // namespace

int main(int argc, char** argv)
{
    TextFolder folder{QString()};
    if (!openTextFolder(argc, argv, folder))
        return 2;
    const QVector<QString> urls = folder.urls();

    QJsonObject result{{QStringLiteral("files"), sizeOfFiles(folder.languages())},
                       {QStringLiteral("before"), residentMemory()}};
    const TextManagerBase texts(folder.languages(), TextFolder::language(),
                                TextFolder::shortFolder());
    result.insert(QStringLiteral("loaded"), residentMemory());
    result.insert(QStringLiteral("peak"), memory("VmHWM"));

    for (const QString& url : urls) {
        if (texts.getText(url, QString()).isEmpty())
            qFatal("No text: %s", qUtf8Printable(url));
    }
    result.insert(QStringLiteral("lookedUp"), residentMemory());
    std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    return 0;
}
