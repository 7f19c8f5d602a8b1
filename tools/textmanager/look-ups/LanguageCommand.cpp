#include "LanguageCommand.h"

#include "CommandLine.h"
#include "Folders.h"

namespace
{

void reportOtherLanguage(const LanguageFolder& folder, const QString& wanted, const QString& other)
{
    const QString loaded = folder.getAvailableLanguages().join(QStringLiteral(", "));
    printMessage(QStringLiteral("language '%1' is not loaded%2; %3.")
                     .arg(wanted,
                          other.isEmpty() ? QString() : QStringLiteral(", '%1' answers").arg(other),
                          loaded.isEmpty() ? QStringLiteral("no language is loaded")
                                           : QStringLiteral("loaded are: ") + loaded));
}

} // namespace

ExitStatus runForLanguage(const CommandLine& commandLine, PrintLanguage print)
{
    const auto folder = openFolder(commandLine.arguments().constFirst());
    if (!folder)
        return UnusableInput;
    const QString language = folder->chooseLoadedLanguage(commandLine.language());
    if (language != commandLine.language())
        reportOtherLanguage(*folder, commandLine.language(), language);
    if (language.isEmpty())
        return AnswerIsNo;
    print(*folder, language, commandLine.isJsonWanted());
    return Done;
}
