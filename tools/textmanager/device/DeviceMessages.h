#pragma once

#include <QString>

/**
 * Prints a message of the library. The one that says that there is no connector to the device comes
 * for each question to it: it is replaced, the first time, by what to do about it.
 */
void printDeviceMessage(const QString& message);
