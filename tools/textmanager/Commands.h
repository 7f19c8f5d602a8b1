#pragma once

#include "Console.h"

#include <QStringList>

// The commands, each in a source of its own. Each takes the words behind its name and returns the
// program's exit status.

ExitStatus runAll(const QStringList& words);
ExitStatus runGet(const QStringList& words);
ExitStatus runHeader(const QStringList& words);
ExitStatus runLanguages(const QStringList& words);
ExitStatus runNew(const QStringList& words);
ExitStatus runPick(const QStringList& words);
ExitStatus runRemove(const QStringList& words);
ExitStatus runSet(const QStringList& words);
ExitStatus runSetHeader(const QStringList& words);
/** Needs the reference platform, whose walk over JSON data it takes. */
ExitStatus runTranslate(const QStringList& words);
ExitStatus runUrls(const QStringList& words);
ExitStatus runWatch(const QStringList& words);
