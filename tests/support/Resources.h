#pragma once

#include <functional>

/** The most memory that the test program has taken so far. */
int peakMegabytes();

/** Runs @p work in a thread with a small stack, and waits for it. */
void runOnSmallStack(const std::function<void()>& work, uint kilobytes = 128);
