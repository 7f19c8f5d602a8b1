// Checking a folder of languages that all say the same, and beside it loading the folder.

#include "BenchmarkProgram.h"
#include "FolderCheck.h"

#include <TextManagerBase.h>

#include <benchmark/benchmark.h>

#include <QDirIterator>
#include <QFile>

namespace
{

/** The most memory that the process ever had, in bytes. */
double peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        qFatal("/proc/self/status cannot be read.");
    const QByteArrayList lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("VmHWM:"))
            return line.simplified().split(' ').at(1).toDouble() * 1024;
    }
    qFatal("/proc/self/status has no VmHWM.");
}

double sizeOfFiles(const QString& folder)
{
    double size = 0;
    QDirIterator files(folder, QDir::Files);
    while (files.hasNext()) {
        files.next();
        size += static_cast<double>(files.fileInfo().size());
    }
    return size;
}

void check(benchmark::State& state, const TextFolder& folder, double memoryBefore)
{
    for (auto _ : state) {
        const LanguageCatalog catalog(folder.translations());
        const CheckResult result = checkFolder(catalog, CheckSettings());
        if (result.countOf(Finding::Class::Error) > 0)
            state.SkipWithError("The translations have errors, which take their time.");
    }
    // Of use in a program that only checks: what loading took is never given back.
    state.counters["peak"] = peakMemory() - memoryBefore;
    state.counters["files"] = sizeOfFiles(folder.translations());
}

void load(benchmark::State& state, const TextFolder& folder)
{
    for (auto _ : state) {
        const TextManagerBase texts(folder.translations(), TextFolder::language(),
                                    TextFolder::shortFolder());
        benchmark::DoNotOptimize(&texts);
    }
}

bool addAll(const TextFolder& folder)
{
    benchmark::SetDefaultTimeUnit(benchmark::kMillisecond);
    // In real time: files are checked by several threads.
    benchmark::RegisterBenchmark("check", check, folder, peakMemory())->UseRealTime();
    benchmark::RegisterBenchmark("load", load, folder)->UseRealTime();
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    return runBenchmarks(argc, argv, addAll);
}
