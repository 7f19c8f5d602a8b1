#include "CommandLine.h"
#include "Commands.h"
#include "LanguageFolder.h"

#include "LanguageDefinitions.h"

ExitStatus runHeader(const QStringList& words)
{
    CommandLine commandLine(QStringLiteral("header DIR"),
                            QStringLiteral("Shows language and sub-language from the header of a "
                                           "language file. For a language that is not loaded, "
                                           "en_US answers."));
    commandLine.addLanguageOption(QStringLiteral("The language whose header is shown."));
    if (const auto status = commandLine.parse(words))
        return *status;
    const auto folder = LanguageFolder::open(commandLine.arguments().first());
    if (!folder)
        return UnusableInput;
    const QString language = folder->chooseLoadedLanguage(commandLine.language());
    if (language.isEmpty())
        return AnswerIsNo;

    const QPair<QString, QString> info = folder->getLanguageHeaderInfo(language);
    const QString languageName = LanguageDefinitions::getJsonHeaderLanguageKey();
    const QString subLanguageName = LanguageDefinitions::getJsonHeaderSubLanguageKey();
    if (commandLine.isJsonWanted()) {
        printResult({{languageName, info.first}, {subLanguageName, info.second}});
        return Done;
    }
    printResult(QStringLiteral("%1: %2").arg(languageName, info.first));
    printResult(QStringLiteral("%1: %2").arg(subLanguageName, info.second));
    return Done;
}
