#pragma once

#include "Description.h"

/** The page of a program's manual, in roff: what 'man' shows. It names the version of the build. */
QString manPage(const ProgramDescription& program);

/** The page of a program that has no commands. */
QString manPage(const CommandDescription& program);
