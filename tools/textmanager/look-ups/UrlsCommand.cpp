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

ExitStatus runUrls(const CommandLine& commandLine)
{
    return runForLanguage(commandLine, printUrls);
}

} // namespace

Command urlsCommand()
{
    return {{QStringLiteral("urls DIR"),
             QStringLiteral("list the URLs of all texts of a language"),
             QStringLiteral("Lists the URLs of all texts of a language. For a language that is not "
                            "loaded, en_US answers. The exit status is 1 when neither is loaded."),
             {languageOption(QStringLiteral("The language whose URLs are listed."))},
             QStringLiteral("textmanager urls languages --language de_DE")},
            runUrls};
}
