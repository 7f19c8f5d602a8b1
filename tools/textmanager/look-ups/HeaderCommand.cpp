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

} // namespace

ExitStatus runHeader(const QStringList& words)
{
    CommandLine commandLine(QStringLiteral("header DIR"),
                            QStringLiteral("Shows language and sub-language from the header of a "
                                           "language file. For a language that is not loaded, "
                                           "en_US answers."));
    commandLine.addLanguageOption(QStringLiteral("The language whose header is shown."));
    return runForLanguage(commandLine, words, printHeader);
}
