#include "CommandLine.h"
#include "Commands.h"
#include "Folders.h"
#include "NearestNames.h"

#include "ReadAllTextsHelper.h"

namespace
{

ExitStatus runAll(const CommandLine& commandLine)
{
    const auto folder = openFolder(commandLine.arguments().constFirst());
    if (!folder)
        return UnusableInput;

    const QString url = commandLine.arguments().constLast();
    const QMap<QString, QVariant> texts = ReadAllTextsHelper::getAllTextsAsVariantMap(*folder, url);
    QString json;
    ReadAllTextsHelper::convertVariantMapToJsonString(texts, json);
    printResult(json);
    if (!texts.isEmpty())
        return Done;
    printMessage(QStringLiteral("%1: no language has a text there.").arg(url) +
                 suggestNames(url, folder->collectAllUrls()));
    return AnswerIsNo;
}

} // namespace

Command allCommand()
{
    return {{QStringLiteral("all DIR URL"),
             QStringLiteral("print a text in all languages, as one JSON object"),
             QStringLiteral(
                 "Prints the text in all languages as a translateable text object: JSON in one "
                 "line, from language key to text, in either format. A language without the text "
                 "shows that of en_US or POSIX. 'textmanager pick' chooses from the object. The "
                 "exit status is 1, and the object empty, when no language has the text."),
             {},
             QStringLiteral("textmanager all languages Menu/Save")},
            runAll};
}
