// The memory of one text manager: a process of its own that loads, looks every text up once, and
// prints a JSON object. With a second argument, "library" or the name of a peer, what it takes to
// open that.

#include "BenchmarkProgram.h"
#include "Peers.h"

#include <TextManagerBase.h>

#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>

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

int print(const QJsonObject& result)
{
    std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
    return 0;
}

/**
 * What opening takes until the first text is there, in time and in memory of this process alone:
 * what is mapped from a file is not counted.
 */
template<typename Open>
int measureOpening(Open open)
{
    const qint64 before = memory("RssAnon");
    const auto start = std::chrono::steady_clock::now();
    const auto texts = open(); // kept until the memory is measured
    const std::chrono::duration<double> duration = std::chrono::steady_clock::now() - start;
    return print({{QStringLiteral("seconds"), duration.count()},
                  {QStringLiteral("private"), memory("RssAnon") - before}});
}

template<typename Peer>
int measurePeer(const TextFolder& folder)
{
    const QByteArray id = folder.urls().constFirst().toUtf8();
    return measureOpening([&] {
        auto peer = std::make_unique<Peer>(folder);
        if (peer->text(id).isEmpty())
            qFatal("No text: %s", id.constData());
        return peer;
    });
}

std::unique_ptr<TextManagerBase> openLibrary(const TextFolder& folder)
{
    return std::make_unique<TextManagerBase>(folder.languages(), TextFolder::language(),
                                             TextFolder::shortFolder());
}

/** Every text looked up once. */
int measureLookUps(const TextFolder& folder)
{
    const QVector<QString> urls = folder.urls();
    QJsonObject result{{QStringLiteral("files"), sizeOfFiles(folder.languages())},
                       {QStringLiteral("before"), memory("VmRSS")}};
    const auto texts = openLibrary(folder);
    result.insert(QStringLiteral("loaded"), memory("VmRSS"));
    result.insert(QStringLiteral("peak"), memory("VmHWM"));
    for (const QString& url : urls) {
        if (texts->getText(url, QString()).isEmpty())
            qFatal("No text: %s", qUtf8Printable(url));
    }
    result.insert(QStringLiteral("lookedUp"), memory("VmRSS"));
    return print(result);
}

} // namespace

int main(int argc, char** argv)
{
    const QByteArray opened = argc > 2 ? argv[2] : "";
    TextFolder folder{QString()};
    if (!openTextFolder(std::min(argc, 2), argv, folder))
        return 2;
    if (opened == "QTranslator")
        return measurePeer<TranslatorPeer>(folder);
    if (opened == "dgettext")
        return measurePeer<GettextPeer>(folder);
    if (opened == "ICU")
        return measurePeer<IcuPeer>(folder);
    if (opened == "library")
        return measureOpening([&] { return openLibrary(folder); });
    return measureLookUps(folder);
}
