#pragma once

#include "TextFolder.h"

/**
 * Runs the benchmarks that @p registerBenchmarks registers for the folder of texts that the command
 * line names. What the benchmarks use must live until the end of the program.
 *
 * @return the exit status: 0, 1 when @p registerBenchmarks says that something is wrong, or 2 for
 * wrong usage.
 */
int runBenchmarks(int argc, char** argv, bool (*registerBenchmarks)(const TextFolder& folder));

/** What the command line names, when that is one folder of texts; else the error is told. */
bool openTextFolder(int argc, char** argv, TextFolder& folder);
