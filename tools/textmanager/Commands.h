#pragma once

#include "Console.h"
#include "Description.h"

#include <QVector>

class CommandLine;

/** A command: what it says of itself, and what it does. */
struct Command {
    CommandDescription description;
    /** @param commandLine has been found to fit the description. @return how the program ends. */
    ExitStatus (*run)(const CommandLine& commandLine);
};

// The commands, each in a source of its own.

Command allCommand();
Command checkCommand();
Command exportCommand();
Command getCommand();
Command headerCommand();
Command importCommand();
Command languagesCommand();
Command markCommand();
Command newCommand();
Command packCommand();
Command pickCommand();
Command pseudoCommand();
Command removeCommand();
Command renameCommand();
Command setCommand();
Command setHeaderCommand();
/** Needs the reference platform, whose walk over JSON data it takes. */
Command translateCommand();
Command urlsCommand();
Command watchCommand();

/** All of them, in the order of their names, with the options that every command has. */
QVector<Command> commands();

/** The program with all its commands. */
ProgramDescription describeProgram();
