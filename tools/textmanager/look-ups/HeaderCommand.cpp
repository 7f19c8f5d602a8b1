#include "CommandLine.h"
#include "Commands.h"
#include "LanguageCommand.h"
#include "LanguageFolder.h"

#include "LanguageDefinitions.h"

namespace
{

void printHeader(const LanguageFolder& folder, const QString& language, bool isJsonWanted)
{
    const QPair<QString, QString> info = folder.getLanguageHeaderInfo(language);
    const QString languageName = LanguageDefinitions::getJsonHeaderLanguageKey();
    const QString subLanguageName = LanguageDefinitions::getJsonHeaderSubLanguageKey();
    if (isJsonWanted) {
        printResult({{languageName, info.first}, {subLanguageName, info.second}});
        return;
    }
    printResult(QStringLiteral("%1: %2").arg(languageName, info.first));
    printResult(QStringLiteral("%1: %2").arg(subLanguageName, info.second));
}

ExitStatus runHeader(const CommandLine& commandLine)
{
    return runForLanguage(commandLine, printHeader);
}

} // namespace

Command headerCommand()
{
    return {
        {QStringLiteral("header DIR"),
         QStringLiteral("show the header of a language"),
         QStringLiteral(
             "Shows language and sub-language from the header of a language file. For a language "
             "that is not loaded, en_US answers. The exit status is 1 when neither is loaded."),
         {languageOption(QStringLiteral("The language whose header is shown."))},
         QStringLiteral("textmanager header languages --language de_DE")},
        runHeader};
}
