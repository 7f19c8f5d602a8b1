#include "LanguageCommand.h"

#include "CommandLine.h"
#include "LanguageFolder.h"

ExitStatus runForLanguage(CommandLine& commandLine, const QStringList& words, PrintLanguage print)
{
    if (const auto status = commandLine.parse(words))
        return *status;
    const auto folder = LanguageFolder::open(commandLine.arguments().first());
    if (!folder)
        return UnusableInput;
    const QString language = folder->chooseLoadedLanguage(commandLine.language());
    if (language.isEmpty())
        return AnswerIsNo;
    print(*folder, language, commandLine.isJsonWanted());
    return Done;
}
