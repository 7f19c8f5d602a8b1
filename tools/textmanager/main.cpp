#include "CommandLine.h"
#include "Commands.h"
#include "Completion.h"
#include "Console.h"
#include "HelpText.h"
#include "ManPage.h"
#include "NearestNames.h"
#include "Utf8.h"

#include <QCoreApplication>

#include <algorithm>
#include <optional>

namespace
{

ExitStatus refuseCommand(const QString& name)
{
    QStringList names;
    for (const Command& command : commands())
        names.append(command.description.name());
    printMessage(QStringLiteral("there is no command '%1'.").arg(name) + suggestNames(name, names) +
                 QStringLiteral("\nSee 'textmanager --help'."));
    return UnusableInput;
}

ExitStatus runCommand(const QString& name, const QStringList& words)
{
    const QVector<Command> all = commands();
    const auto command = std::find_if(all.cbegin(), all.cend(), [&](const Command& one) {
        return one.description.name() == name;
    });
    if (command == all.cend())
        return refuseCommand(name);
    CommandLine commandLine(command->description);
    const auto status = commandLine.parse(words);
    return status ? *status : command->run(commandLine);
}

ExitStatus printHelp(const QStringList& words)
{
    if (!words.isEmpty())
        return runCommand(words.first(), {QStringLiteral("--help")});
    printResult(helpText(describeProgram()));
    return Done;
}

ExitStatus run(const QStringList& words)
{
    if (words.isEmpty()) {
        printMessage(QStringLiteral("which command?\n") + helpText(describeProgram()));
        return UnusableInput;
    }
    const QString& name = words.first();
    if (name == QLatin1String("--help") || name == QLatin1String("-h"))
        return printHelp({});
    if (name == QLatin1String("help"))
        return printHelp(words.mid(1));
    if (name == QLatin1String("--version") || name == QLatin1String("-v"))
        printResult(QStringLiteral("textmanager " TEXTMANAGER_VERSION));
    else if (name == QLatin1String("__man")) // for the build
        printResult(manPage(describeProgram()));
    else if (name == QLatin1String("__complete")) // for the shells
        printResult(completionsOf(words.mid(1)));
    else
        return runCommand(name, words.mid(1));
    return Done;
}

/** What is not encoded in UTF-8, its foreign bytes as "\xff". */
QString withVisibleBytes(const QByteArray& bytes)
{
    QString shown;
    for (const char byte : bytes)
        shown += static_cast<signed char>(byte) >= 0
                     ? QString(QLatin1Char(byte))
                     : QStringLiteral("\\x") + QString::fromLatin1(QByteArray(1, byte).toHex());
    return shown;
}

/**
 * The arguments, in which a byte-order mark is a character, too; nothing, after a message, when one
 * is not encoded in UTF-8. Decoded, it would be another one, and be looked for, or written, as
 * such.
 */
std::optional<QStringList> readArguments(int argc, char* argv[])
{
    QStringList arguments;
    for (int index = 1; index < argc; ++index) {
        const std::optional<QString> argument = decodeUtf8(argv[index]);
        if (!argument) {
            printMessage(QStringLiteral("the argument '%1' is not encoded in UTF-8. Give a text in "
                                        "UTF-8, and rename a file or folder whose name is not.")
                             .arg(withVisibleBytes(argv[index])));
            return std::nullopt;
        }
        arguments.append(*argument);
    }
    return arguments;
}

} // namespace

int main(int argc, char* argv[])
{
    useUtf8Everywhere();
    const QCoreApplication application(argc, argv);
    installMessageHandler();
    const std::optional<QStringList> arguments = readArguments(argc, argv);
    return arguments ? finishOutput(run(*arguments)) : UnusableInput;
}
