#include "CommandLine.h"
#include "Commands.h"
#include "EditBatch.h"
#include "EditResult.h"
#include "Folders.h"
#include "Input.h"
#include "NewUrls.h"
#include "TextKey.h"
#include "TextNodes.h"

#include "LanguageDefinitions.h"
#include "LanguageInformation.h"

#include <QSet>

namespace
{

const QLatin1String mustExistOption("must-exist");

QString textOption()
{
    return LanguageDefinitions::getJsonTextName();
}

QString commentOption()
{
    return LanguageDefinitions::getJsonCommentName();
}

QString batchOption()
{
    return QStringLiteral("batch");
}

/** Writes one member of the node; what was there already is left. @return why it could not. */
QString writeMember(const QStringList& node, const QString& name,
                    const std::optional<QString>& value, QJsonObject& document)
{
    return value ? writeString(node + QStringList(name), *value, document) : QString();
}

/** Applies one edit to the document. @return why that is not possible; empty when it is done. */
QString apply(const TextEdit& edit, QJsonObject& document, QVector<EditChange>& changes)
{
    const QStringList node = storagePathOf(edit.url, document);
    const QJsonValue before = valueAt(node, document);
    const QString unusableKey = before.isUndefined() ? findUnusableKey(edit.url) : QString();
    if (!unusableKey.isEmpty())
        return unusableKey;

    QString obstacle = writeMember(node, textOption(), edit.text, document);
    if (obstacle.isEmpty())
        obstacle = writeMember(node, commentOption(), edit.comment, document);
    if (!obstacle.isEmpty())
        return obstacle;

    changes.append(changeOf(edit.url, before, valueAt(node, document)));
    return QString();
}

void reportHalfNodes(const QVector<EditChange>& changes, const QJsonObject& document)
{
    QSet<TextKey> reported;
    for (const EditChange& change : changes) {
        const QJsonValue node = valueAt(storagePathOf(change.name, document), document);
        if (LanguageInformation().checkIfTextAndCommentExists(node) ||
            reported.contains(change.name))
            continue;
        reported.insert(change.name);
        const bool hasText =
            LanguageInformation().checkIfPropertyExists(node.toObject(), textOption());
        printMessage(QStringLiteral("%1: has no %2 yet, and is not listed before it has one. Give "
                                    "it one with --%2.")
                         .arg(change.name, hasText ? commentOption() : textOption()));
    }
}

/** Applies all edits to the document. @p origin names where their lines come from.
 * @return whether all could be; messages say why not. */
bool applyAll(const QVector<TextEdit>& edits, const QString& origin, QJsonObject& document,
              QVector<EditChange>& changes)
{
    bool areAllDone = true;
    for (const TextEdit& edit : edits) {
        const QString fault = apply(edit, document, changes);
        if (fault.isEmpty())
            continue;
        const QString place =
            edit.line > 0 ? QStringLiteral("%1:%2: ").arg(origin, QString::number(edit.line))
                          : QString();
        printMessage(QStringLiteral("%1%2: cannot be written: %3.").arg(place, edit.url, fault));
        areAllDone = false;
    }
    return areAllDone;
}

/** Does all edits and saves, or none. */
ExitStatus doAll(LanguageFileEditor& editor, const QVector<TextEdit>& edits,
                 const CommandLine& commandLine)
{
    const NewUrls newUrls(edits, editor.document());
    const QString origin = Input::nameOf(commandLine.value(batchOption()));
    QVector<EditChange> changes;
    if ((commandLine.isSet(mustExistOption) && newUrls.areRefused()) ||
        !applyAll(edits, origin, editor.document(), changes)) {
        printMessage(QStringLiteral("nothing was changed in %1.").arg(editor.filePath()));
        return AnswerIsNo;
    }
    newUrls.askForSlips(commandLine.arguments().constFirst()); // before the file knows them, too
    const ExitStatus status = saveAndPrint(editor, changes, commandLine);
    if (status == Done)
        reportHalfNodes(changes, editor.document());
    return status;
}

/** All of a file, or of standard input for "-"; nothing, after a message, when it cannot be read.
 */
std::optional<QByteArray> readBatch(const QString& path)
{
    const auto input = Input::open(path);
    return input ? input->readAll() : std::nullopt;
}

/** The edits of a batch; nothing, after messages, when one of its lines is none. */
std::optional<QVector<TextEdit>> readEdits(const QString& path)
{
    const std::optional<QByteArray> bytes = readBatch(path);
    if (!bytes)
        return std::nullopt;
    const EditBatch batch(*bytes);
    for (const QString& fault : batch.faults())
        printMessage(QStringLiteral("%1:%2").arg(Input::nameOf(path), fault));
    if (batch.faults().isEmpty())
        return batch.edits();
    printMessage(QStringLiteral("nothing was changed."));
    return std::nullopt;
}

/** The edit that the options ask for. */
TextEdit editOf(const CommandLine& commandLine)
{
    TextEdit edit;
    edit.url = commandLine.arguments().value(2);
    if (commandLine.isSet(textOption()))
        edit.text = commandLine.value(textOption());
    if (commandLine.isSet(commentOption()))
        edit.comment = commandLine.value(commentOption());
    return edit;
}

/** Why the options and arguments do not go together; empty when they do. */
QString findConflict(const CommandLine& commandLine)
{
    const bool hasUrl = commandLine.arguments().size() > 2;
    const bool hasValue = commandLine.isSet(textOption()) || commandLine.isSet(commentOption());
    if (commandLine.isSet(batchOption()) && commandLine.value(batchOption()).isEmpty())
        return QStringLiteral("--batch needs a FILE, or - for standard input.");
    if (commandLine.isSet(batchOption()))
        return hasUrl || hasValue
                   ? QStringLiteral("--batch goes without URL, --text and --comment.")
                   : QString();
    if (!hasUrl)
        return QStringLiteral("URL is missing.");
    return hasValue ? QString() : QStringLiteral("--text or --comment is missing.");
}

ExitStatus runSet(const CommandLine& commandLine)
{
    const QString conflict = findConflict(commandLine);
    if (!conflict.isEmpty())
        return commandLine.refuse(conflict);

    // A batch is read before the file is locked: nobody waits for whoever writes the batch.
    const QString batch = commandLine.value(batchOption());
    const auto edits = commandLine.isSet(batchOption()) ? readEdits(batch)
                                                        : QVector<TextEdit>{editOf(commandLine)};
    if (!edits)
        return UnusableInput;
    const QStringList arguments = commandLine.arguments();
    const auto editor = openEditor(arguments.at(0), arguments.at(1));
    if (!editor)
        return UnusableInput;
    return doAll(*editor, *edits, commandLine);
}

} // namespace

Command setCommand()
{
    return {{QStringLiteral("set DIR LANGUAGE [URL]"),
             QStringLiteral("write texts and comments by URL"),
             QStringLiteral(
                 "Writes the text at URL, its comment, or both, into the file of LANGUAGE in the "
                 "folder DIR. A URL that is not there is added; when it is near one that is, "
                 "standard error asks which was meant. The exit status is 1, and nothing is "
                 "changed, when something else is in the text's place.\n\nA batch has one edit a "
                 "line, either as JSON, {\"url\": \"Menu/Save\", \"text\": \"Save\", \"comment\": "
                 "\"Button\"}, or as URL, text and comment separated by tabs; what is left out "
                 "stays as it is. All of it is done, or nothing."),
             {{textOption(), QStringLiteral("TEXT"), QStringLiteral("The text.")},
              {commentOption(), QStringLiteral("COMMENT"),
               QStringLiteral("The comment for translators.")},
              {batchOption(), QStringLiteral("FILE"),
               QStringLiteral("Take the edits from FILE; - is standard input.")},
              {mustExistOption, {}, QStringLiteral("Refuse URLs that are not there.")},
              dryRunOption()},
             QStringLiteral("textmanager set languages de_DE Menu/Save --text Sichern")},
            runSet};
}
