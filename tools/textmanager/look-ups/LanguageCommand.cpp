#include "LanguageCommand.h"

#include "CommandLine.h"
#include "LanguageFolder.h"

ExitStatus runForLanguage(const CommandLine& commandLine, PrintLanguage print)
{
    const auto folder = LanguageFolder::open(commandLine.arguments().first());
    if (!folder)
        return UnusableInput;
    const QString language = folder->chooseLoadedLanguage(commandLine.language());
    if (language.isEmpty())
        return AnswerIsNo;
    print(*folder, language, commandLine.isJsonWanted());
    return Done;
}
