#include "Commands.h"
#include "Console.h"
#include "NearestNames.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <algorithm>
#include <iterator>

namespace
{

struct Command {
    const char* name;
    const char* summary;
    ExitStatus (*run)(const QStringList& words);
};

constexpr Command commands[] = {
    {"all", "print a text in all languages, as one JSON object", runAll},
    {"get", "print texts, short texts or comments by URL", runGet},
    {"header", "show the header of a language", runHeader},
    {"languages", "list the languages of a folder, and its faulty files", runLanguages},
    {"new", "start a language with the URLs of another", runNew},
    {"pick", "choose the text of a language from such an object", runPick},
    {"remove", "remove texts with all that is below them", runRemove},
    {"set", "write texts and comments by URL", runSet},
    {"set-header", "write the header of a language", runSetHeader},
#ifdef TEXTMANAGER_HAS_REFERENCE_PLATFORM
    {"translate", "write the texts of their text ids into JSON data", runTranslate},
#endif
    {"urls", "list the URLs of all texts of a language", runUrls},
    {"watch", "print texts in the device's language whenever it changes", runWatch},
};

QString helpText()
{
    QString text =
        QStringLiteral("Usage: textmanager COMMAND [options] ARGUMENTS\n\n"
                       "Looks into a folder of language files, and edits them.\n\nCommands:\n");
    for (const Command& command : commands)
        text += QStringLiteral("  %1 %2\n")
                    .arg(QLatin1String(command.name), -10)
                    .arg(QLatin1String(command.summary));
    return text + QStringLiteral("\n'textmanager COMMAND --help' describes a command, "
                                 "'textmanager --version' names the version.");
}

ExitStatus refuseCommand(const QString& name)
{
    QStringList names;
    for (const Command& command : commands)
        names.append(QLatin1String(command.name));
    printMessage(QStringLiteral("there is no command '%1'.").arg(name) + suggestNames(name, names) +
                 QStringLiteral("\nSee 'textmanager --help'."));
    return UnusableInput;
}

ExitStatus run(const QStringList& words)
{
    if (words.isEmpty()) {
        printMessage(QStringLiteral("which command?\n") + helpText());
        return UnusableInput;
    }
    const QString& name = words.first();
    if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
        printResult(helpText());
        return Done;
    }
    if (name == QLatin1String("--version") || name == QLatin1String("-v")) {
        printResult(QStringLiteral("textmanager " TEXTMANAGER_VERSION));
        return Done;
    }
    const auto command = std::find_if(std::begin(commands), std::end(commands),
                                      [&](const auto& c) { return name == QLatin1String(c.name); });
    return command == std::end(commands) ? refuseCommand(name) : command->run(words.mid(1));
}

} // namespace

int main(int argc, char* argv[])
{
    // Arguments, file names and output are UTF-8 also where the device sets no locale.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    const QCoreApplication application(argc, argv);
    installMessageHandler();
    return finishOutput(run(QCoreApplication::arguments().mid(1)));
}
