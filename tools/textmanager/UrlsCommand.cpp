#include "CommandLine.h"
#include "Commands.h"
#include "LanguageFolder.h"

#include <QJsonArray>

ExitStatus runUrls(const QStringList& words)
{
    CommandLine commandLine(QStringLiteral("urls DIR"),
                            QStringLiteral("Lists the URLs of all texts of a language. For a "
                                           "language that is not loaded, en_US answers."));
    commandLine.addLanguageOption(QStringLiteral("The language whose URLs are listed."));
    if (const auto status = commandLine.parse(words))
        return *status;
    const auto folder = LanguageFolder::open(commandLine.arguments().first());
    if (!folder)
        return UnusableInput;
    const QString language = folder->chooseLoadedLanguage(commandLine.language());
    if (language.isEmpty())
        return AnswerIsNo;

    const QStringList urls = folder->getAvailableUrls(language);
    if (commandLine.isJsonWanted()) {
        printResult({{QStringLiteral("language"), language},
                     {QStringLiteral("urls"), QJsonArray::fromStringList(urls)}});
        return Done;
    }
    for (const QString& url : urls)
        printResult(url);
    return Done;
}
