#include "BenchmarkProgram.h"

#include <benchmark/benchmark.h>

#include <QFile>

#include <cstdio>

namespace
{

void printHelp()
{
    std::puts("usage: PROGRAM [options] FOLDER\n"
              "FOLDER is one that benchmarks/generate_texts.py wrote. The options:");
    benchmark::PrintDefaultHelp();
}

} // namespace

bool openTextFolder(int argc, char** argv, TextFolder& folder)
{
    if (argc != 2) {
        std::fprintf(stderr, "%s: expected one folder of texts, and options; see --help.\n",
                     argv[0]);
        return false;
    }
    folder = TextFolder(QFile::decodeName(argv[1]));
    if (!folder.isUsable()) {
        std::fprintf(stderr, "%s: no texts in '%s'; write some with generate_texts.py.\n", argv[0],
                     argv[1]);
        return false;
    }
    return true;
}

int runBenchmarks(int argc, char** argv, bool (*registerBenchmarks)(const TextFolder& folder))
{
    benchmark::Initialize(&argc, argv, printHelp);
    TextFolder folder{QString()};
    if (!openTextFolder(argc, argv, folder))
        return 2;
    if (!registerBenchmarks(folder))
        return 1;
    benchmark::AddCustomContext("compiler", "gcc " __VERSION__);
    benchmark::AddCustomContext("Qt", qVersion());
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
