// Loading and listing a folder of languages, and beside them the parser alone.

#include "BenchmarkProgram.h"

#include <TextManagerBase.h>

#include <benchmark/benchmark.h>

#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>

namespace
{

QVector<QByteArray> readAllFiles(const QString& folder)
{
    QVector<QByteArray> contents;
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            contents.append(file.readAll());
    }
    return contents;
}

void loadFolder(benchmark::State& state, const TextFolder& folder)
{
    for (auto _ : state) {
        const TextManagerBase texts(folder.languages(), TextFolder::language(),
                                    TextFolder::shortFolder());
        benchmark::DoNotOptimize(&texts);
    }
}

void parseSameBytes(benchmark::State& state, const TextFolder& folder)
{
    const QVector<QByteArray> contents = readAllFiles(folder.languages());
    for (auto _ : state) {
        // Kept until all are parsed, as texts must be.
        QVector<QJsonDocument> documents;
        for (const QByteArray& content : contents)
            documents.append(QJsonDocument::fromJson(content));
        benchmark::DoNotOptimize(documents);
    }
}

void reloadUnchanged(benchmark::State& state, const TextFolder& folder)
{
    TextManagerBase texts(folder.languages(), TextFolder::language(), TextFolder::shortFolder());
    for (auto _ : state)
        texts.reloadLanguage();
}

void listUrls(benchmark::State& state, const TextFolder& folder)
{
    const TextManagerBase texts(folder.languages(), TextFolder::language(),
                                TextFolder::shortFolder());
    for (auto _ : state)
        benchmark::DoNotOptimize(texts.getAvailableUrls(TextFolder::language()));
}

bool addAll(const TextFolder& folder)
{
    benchmark::SetDefaultTimeUnit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("load", loadFolder, folder);
    benchmark::RegisterBenchmark("fromJson", parseSameBytes, folder);
    benchmark::RegisterBenchmark("reload", reloadUnchanged, folder);
    benchmark::RegisterBenchmark("getAvailableUrls", listUrls, folder);
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, addAll);
}
