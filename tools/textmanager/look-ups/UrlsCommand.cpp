#include "CommandLine.h"
#include "Commands.h"
#include "LanguageCommand.h"
#include "LanguageFolder.h"

#include <QJsonArray>

namespace
{

void printUrls(const LanguageFolder& folder, const QString& language, bool isJsonWanted)
{
    const QStringList urls = folder.getAvailableUrls(language);
    if (isJsonWanted) {
        printResult({{QStringLiteral("language"), language},
                     {QStringLiteral("urls"), QJsonArray::fromStringList(urls)}});
        return;
    }
    for (const QString& url : urls)
        printResult(url);
}

} // namespace

ExitStatus runUrls(const QStringList& words)
{
    CommandLine commandLine(QStringLiteral("urls DIR"),
                            QStringLiteral("Lists the URLs of all texts of a language. For a "
                                           "language that is not loaded, en_US answers."));
    commandLine.addLanguageOption(QStringLiteral("The language whose URLs are listed."));
    return runForLanguage(commandLine, words, printUrls);
}
