// Loading and listing a folder of languages, and beside them the parser alone.

#include "BenchmarkProgram.h"

#include <TextManagerBase.h>

#include <benchmark/benchmark.h>

#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <thread>
#include <utility>
#include <vector>

#include <sys/stat.h>

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

/** The least that can tell whether a file has changed. */
void statFiles(benchmark::State& state, const TextFolder& folder)
{
    QByteArrayList paths;
    QDirIterator files(folder.languages(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        paths.append(QFile::encodeName(files.next()));
    for (auto _ : state) {
        for (const QByteArray& path : std::as_const(paths)) {
            struct stat status;
            benchmark::DoNotOptimize(::stat(path.constData(), &status));
        }
    }
}

/** How long a look-up takes, in all but the slowest of a hundred, while another thread reloads. */
void lookUpBesideReloads(benchmark::State& state, const TextFolder& folder)
{
    using Clock = std::chrono::steady_clock;
    TextManagerBase texts(folder.languages(), TextFolder::language(), TextFolder::shortFolder());
    const QString url = folder.urls().constFirst();
    std::atomic<bool> isOver = false;
    const auto reloads = std::async(std::launch::async, [&] {
        while (!isOver) {
            texts.reloadLanguage();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    for (auto _ : state) {
        std::vector<std::chrono::duration<double>> durations(1000);
        for (auto& duration : durations) {
            std::this_thread::sleep_for(std::chrono::microseconds(50));
            const auto start = Clock::now();
            benchmark::DoNotOptimize(texts.getText(url, QString()));
            duration = Clock::now() - start;
        }
        const auto slow = durations.begin() + 990;
        std::nth_element(durations.begin(), slow, durations.end());
        state.SetIterationTime(slow->count());
    }
    isOver = true;
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
    benchmark::RegisterBenchmark("stat", statFiles, folder);
    benchmark::RegisterBenchmark("lookUpBesideReloads", lookUpBesideReloads, folder)
        ->Iterations(5)
        ->UseManualTime();
    benchmark::RegisterBenchmark("getAvailableUrls", listUrls, folder);
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, addAll);
}
