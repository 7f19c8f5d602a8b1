#include "CommandLine.h"
#include "Commands.h"
#include "Folders.h"
#include "NearestNames.h"
#include "TextKey.h"
#include "TextRename.h"

#include "LanguageInformation.h"

#include <QDir>
#include <QJsonArray>

namespace
{

QString describe(TextRename::State state)
{
    switch (state) {
    case TextRename::State::Moved:
        return QStringLiteral("renamed");
    case TextRename::State::MovedBefore:
        return QStringLiteral("unchanged");
    case TextRename::State::Without:
        break;
    }
    return QStringLiteral("without");
}

void print(const TextRename& rename, const CommandLine& commandLine)
{
    QJsonArray files;
    for (const TextRename::File& file : rename.files()) {
        if (!commandLine.isJsonWanted() && file.state != TextRename::State::Without)
            printResult(QStringLiteral("%1 in %2").arg(describe(file.state), file.path));
        files.append(QJsonObject{{QStringLiteral("file"), file.path},
                                 {QStringLiteral("change"), describe(file.state)}});
    }
    if (commandLine.isJsonWanted())
        printResult(QJsonObject{{QStringLiteral("dryRun"), commandLine.isDryRun()},
                                {QStringLiteral("files"), files}});
    if (commandLine.isDryRun())
        printMessage(QStringLiteral("a dry run: nothing was written."));
}

void reportMiss(const TextRename& rename, const QString& url)
{
    QStringList urls;
    for (const TextRename::File& file : rename.files())
        urls += LanguageInformation().getAvailableUrls(file.document.document());
    removeRepeated(urls);
    printMessage(QStringLiteral("%1: no language has it. Nothing was changed.").arg(url) +
                 suggestNames(url, urls));
}

ExitStatus runRename(const CommandLine& commandLine)
{
    const QStringList arguments = commandLine.arguments();
    QStringList folders = {arguments.at(0)};
    if (commandLine.isSet(shortFolderOption().name))
        folders.append(QDir(folders.first()).filePath(commandLine.value(shortFolderOption().name)));
    for (const QString& folder : qAsConst(folders)) {
        if (!checkFolder(folder))
            return UnusableInput;
    }
    TextRename rename(arguments.at(1), arguments.at(2));
    QString fault = rename.prepare(folders);
    const bool isAnywhere =
        rename.isInAny(TextRename::State::Moved) || rename.isInAny(TextRename::State::MovedBefore);
    if (fault.isEmpty() && !isAnywhere) {
        reportMiss(rename, arguments.at(1));
        return AnswerIsNo;
    }
    if (fault.isEmpty() && !commandLine.isDryRun())
        fault = rename.save();
    if (!fault.isEmpty()) {
        printMessage(fault);
        return UnusableInput;
    }
    print(rename, commandLine);
    return Done;
}

} // namespace

Command renameCommand()
{
    return {{QStringLiteral("rename DIR URL NEW-URL"),
             QStringLiteral("move a text to another URL in every language"),
             QStringLiteral(
                 "Moves the text at URL, with its comment and all that is below it, to NEW-URL in "
                 "every language of the folder DIR, and with --short-folder in the short texts: in "
                 "all files, or in none. A language that has moved it already is left alone, so "
                 "that what was interrupted is finished by the same again. The exit status is 1, "
                 "and nothing is changed, when no language has it, and 2 when it cannot be moved "
                 "everywhere."),
             {shortFolderOption(), dryRunOption()},
             QStringLiteral("textmanager rename languages Menu/Svae Menu/Save")},
            runRename};
}
