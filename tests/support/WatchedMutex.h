#pragma once

#include <functional>

class QMutex;

/** How often @p work locks a mutex, in whatever thread. No two watch at once. */
int countLocks(const QMutex& mutex, const std::function<void()>& work);
