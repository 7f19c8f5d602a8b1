#pragma once

#include <QStringList>

#include <functional>

/**
 * Runs the program textmanager and stops it before each of its system calls.
 *
 * @param beforeCall is given the number of the call and returns whether it is to be made; if not,
 * the program is killed there, as by a power failure.
 */
void runStepped(const QStringList& arguments, const std::function<bool(long)>& beforeCall);
