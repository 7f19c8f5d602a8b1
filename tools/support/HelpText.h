#pragma once

#include "Description.h"

/** What --help of a command prints. @param programName is empty when the program is meant. */
QString helpText(const CommandDescription& command, const QString& programName = QString());

/** What --help of a program with commands prints: what they are. */
QString helpText(const ProgramDescription& program);

/** "get [options] DIR URL..." */
QString usageOf(const CommandDescription& command);

/** "--language KEY", "-h, --help" */
QString nameOf(const OptionDescription& option);

/** What an option does, its default value too. */
QString summaryOf(const OptionDescription& option);
