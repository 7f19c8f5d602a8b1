#include "Commands.h"

#include "CommandLine.h"

#include <algorithm>

namespace
{

/** Adds --format, where a command has none of its own, and --help. */
void addCommonOptions(QVector<OptionDescription>& options)
{
    const OptionDescription format = formatOption();
    const bool hasFormat = std::any_of(options.cbegin(), options.cend(), [&](const auto& option) {
        return option.name == format.name;
    });
    if (!hasFormat)
        options.append(format);
    options.append(helpOption());
}

} // namespace

QVector<Command> commands()
{
    QVector<Command> commands = {
        allCommand(),       checkCommand(),  exportCommand(),    getCommand(),
        headerCommand(),    importCommand(), languagesCommand(), markCommand(),
        newCommand(),       packCommand(),   pickCommand(),      pseudoCommand(),
        removeCommand(),    renameCommand(), setCommand(),       setHeaderCommand(),
#ifdef TEXTMANAGER_HAS_REFERENCE_PLATFORM
        translateCommand(),
#endif
        urlsCommand(),      watchCommand(),
    };
    for (Command& command : commands)
        addCommonOptions(command.description.options);
    return commands;
}

ProgramDescription describeProgram()
{
    ProgramDescription program{
        QStringLiteral("textmanager"),
        QStringLiteral("look into a folder of language files, and edit them"),
        QStringLiteral(
            "Looks into a folder of language files as the library does, says what the library "
            "keeps to itself (which language answered, why a text was not found, which files were "
            "left out), and edits the files."),
        {}};
    for (const Command& command : commands())
        program.commands.append(command.description);
    return program;
}
