#include "CommandLine.h"
#include "Commands.h"
#include "EditResult.h"
#include "Folders.h"
#include "NearestNames.h"
#include "TextKey.h"
#include "TextNodes.h"

#include "LanguageInformation.h"

#include <QSet>

namespace
{

/** Whether there is a node at every URL; a message says where not. */
bool areThere(const QStringList& urls, const QJsonObject& document)
{
    NameSuggestions suggestions([&] { return LanguageInformation().getAvailableUrls(document); });
    bool areAllThere = true;
    for (const QString& url : urls) {
        if (valueAt(storagePathOf(url, document), document).isObject())
            continue;
        printMessage(QStringLiteral("%1: there is nothing to remove.").arg(url) +
                     suggestions.suggest(url));
        areAllThere = false;
    }
    return areAllThere;
}

/** The URLs given, and those of all texts that went with them. */
QVector<EditChange> removeAll(const QStringList& urls, QJsonObject& document)
{
    const QStringList before = urls + LanguageInformation().getAvailableUrls(document);
    for (const QString& url : urls) {
        const QStringList path = storagePathOf(url, document);
        // It may have gone with one that was named before it.
        if (!valueAt(path, document).isUndefined())
            removeMember(path, document);
    }
    const QStringList after = LanguageInformation().getAvailableUrls(document);

    QSet<TextKey> known(after.begin(), after.end());
    QVector<EditChange> changes;
    for (const QString& url : before) {
        if (known.contains(url))
            continue;
        known.insert(url);
        changes.append({QStringLiteral("removed"), url});
    }
    return changes;
}

ExitStatus runRemove(const CommandLine& commandLine)
{

    const QStringList arguments = commandLine.arguments();
    const auto editor = openEditor(arguments.at(0), arguments.at(1));
    if (!editor)
        return UnusableInput;
    const QStringList urls = arguments.mid(2);
    if (!areThere(urls, editor->document())) {
        printMessage(QStringLiteral("nothing was changed in %1.").arg(editor->filePath()));
        return AnswerIsNo;
    }
    return saveAndPrint(*editor, removeAll(urls, editor->document()), commandLine);
}

} // namespace

Command removeCommand()
{
    return {{QStringLiteral("remove DIR LANGUAGE URL..."),
             QStringLiteral("remove texts with all that is below them"),
             QStringLiteral("Removes each URL, with its text, its comment and all that is below "
                            "it, from the file of LANGUAGE in the folder DIR. The exit status is "
                            "1, and nothing is changed, when a URL is not there."),
             {dryRunOption()},
             QStringLiteral("textmanager remove languages de_DE Alarms/Filter")},
            runRemove};
}
