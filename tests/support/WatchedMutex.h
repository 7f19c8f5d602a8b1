#pragma once

#include "TextManagerBase.h"

#include <functional>

/** How often @p work locks a mutex, in whatever thread. No two watch at once. */
int countLocks(const TextManagerMutex& mutex, const std::function<void()>& work);
