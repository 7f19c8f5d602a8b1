#pragma once

#include "Console.h"

#include <QString>

class CommandLine;
class LanguageFolder;

/** Prints what a command tells of one language of a folder. */
using PrintLanguage = void (*)(const LanguageFolder& folder, const QString& language,
                               bool isJsonWanted);

/** Runs a command that has one folder and --language, with the language that answers for it. */
ExitStatus runForLanguage(const CommandLine& commandLine, PrintLanguage print);
