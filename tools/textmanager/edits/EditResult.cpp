#include "EditResult.h"

#include "CommandLine.h"
#include "Folders.h"

#include <QJsonArray>

#include <csignal>

namespace
{

void print(const QString& file, const QVector<EditChange>& changes, const CommandLine& commandLine)
{
    QJsonArray list;
    for (const EditChange& change : changes) {
        if (!commandLine.isJsonWanted())
            printResult(QStringLiteral("%1 %2").arg(change.change, change.name));
        list.append(QJsonObject{{QStringLiteral("change"), change.change},
                                {QStringLiteral("name"), change.name}});
    }
    if (commandLine.isJsonWanted())
        printResult(QJsonObject{{QStringLiteral("file"), file},
                                {QStringLiteral("dryRun"), commandLine.isDryRun()},
                                {QStringLiteral("changes"), list}});
}

} // namespace

EditChange changeOf(const QString& name, const QJsonValue& before, const QJsonValue& after)
{
    if (before.isUndefined())
        return {QStringLiteral("added"), name};
    return {before == after ? QStringLiteral("unchanged") : QStringLiteral("changed"), name};
}

ExitStatus saveAndPrint(LanguageFileEditor& editor, const QVector<EditChange>& changes,
                        const CommandLine& commandLine)
{
    if (!commandLine.isDryRun() && !saveEditor(editor))
        return UnusableInput;
    std::signal(SIGPIPE, SIG_IGN); // a reader that has gone does not make it undone
    print(editor.filePath(), changes, commandLine);
    const QString fault = takeResultFault();
    if (commandLine.isDryRun())
        printMessage(
            QStringLiteral("a dry run: nothing was written to %1.").arg(editor.filePath()));
    else if (!fault.isEmpty())
        printMessage(QStringLiteral("%1: is saved, but what was changed could not be printed: %2.")
                         .arg(editor.filePath(), fault));
    return Done;
}
