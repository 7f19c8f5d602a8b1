#pragma once

#include <QString>

// Words that no generated constant may be called, beside those that mean something in what is
// generated itself.

/** Keywords of C++, and macros that the headers of C, POSIX and Qt define for everyone. */
bool isReservedInCpp(const QString& word);

/** Keywords of QML and its scripts, and what every object of QML has already. */
bool isReservedInQml(const QString& word);
