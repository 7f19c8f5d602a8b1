#pragma once

#include <QStringList>

#include <functional>

/** An emulator's system calls are not those of the program in it. */
#ifdef RUNS_IN_EMULATOR
#define SKIP_IN_EMULATOR QSKIP("system calls cannot be followed in an emulator")
#else
#define SKIP_IN_EMULATOR
#endif

/**
 * Runs the program textmanager and stops it before each of its system calls.
 *
 * @param beforeCall is given the number of the call and returns whether it is to be made; if not,
 * the program is killed there, as by a power failure.
 */
void runStepped(const QStringList& arguments, const std::function<bool(long)>& beforeCall);
