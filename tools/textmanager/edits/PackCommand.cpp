#include "CommandLine.h"
#include "Commands.h"
#include "FolderPack.h"
#include "Folders.h"
#include "PackVerification.h"
#include "Progress.h"

#include <QJsonArray>

namespace
{

const QLatin1String outputOption("output");
const QLatin1String blankOption("blank-comments");
const QLatin1String dropOption("drop-comments");
const QLatin1String languagesOption("languages");
const QLatin1String forceOption("force");
const QLatin1String noVerifyOption("no-verify");

PackRequest requestOf(const CommandLine& commandLine)
{
    const QString languages = commandLine.value(languagesOption);
    PackRequest request;
    request.folderPath = commandLine.arguments().constFirst();
    request.shortFolder = commandLine.value(shortFolderOption().name);
    request.outputPath = commandLine.value(outputOption);
    request.languages = languages.split(QLatin1Char(','), Qt::SkipEmptyParts);
    request.comments = commandLine.isSet(dropOption)    ? PackedComments::Dropped
                       : commandLine.isSet(blankOption) ? PackedComments::Blank
                                                        : PackedComments::Kept;
    request.isForced = commandLine.isSet(forceOption);
    return request;
}

/** Why the options do not go together; empty when they do. */
QString findConflict(const CommandLine& commandLine)
{
    if (commandLine.isSet(blankOption) && commandLine.isSet(dropOption))
        return QStringLiteral("--blank-comments and --drop-comments exclude each other.");
    if (commandLine.isSet(languagesOption) && requestOf(commandLine).languages.isEmpty())
        return QStringLiteral("--languages needs keys, such as de_DE,en_US.");
    return QString();
}

/** Whether there is nothing that forbids to pack; messages say what does. */
bool canBePacked(const FolderPack& pack, const QString& folderPath)
{
    const QVector<Finding> faults = pack.findFaults();
    for (const Finding& fault : faults)
        printMessage(describeFinding(fault, folderPath));
    if (!faults.isEmpty())
        return false;
    const QString obstacle = pack.findObstacle();
    if (!obstacle.isEmpty())
        printMessage(obstacle);
    return obstacle.isEmpty();
}

/** @return whether every look-up is answered as before; messages say which is not. */
bool isVerified(const PackRequest& request, const FolderPack& pack)
{
    const SilencedWarnings silenced; // both folders would give them
    const PackVerification verification(request, pack.languages(), pack.packedPath());
    Progress progress(QStringLiteral("verifying"));
    const QStringList languages = pack.languages();
    for (int i = 0; i < languages.size(); ++i) {
        const QString& language = languages.at(i);
        progress.show(i, languages.size());
        const QString difference = verification.findDifference(language);
        if (!difference.isEmpty()) {
            progress.clear();
            printMessage(difference);
            return false;
        }
        const int lost = request.languages.isEmpty() ? 0 : verification.countLostTexts(language);
        if (lost == 0)
            continue;
        progress.clear();
        printMessage(QStringLiteral("%1 has %2 texts of languages that are not packed; they "
                                    "will be empty, or others.")
                         .arg(language, QString::number(lost)));
    }
    return true;
}

void printFiles(const FolderPack& pack, const CommandLine& commandLine)
{
    QJsonArray list;
    for (const PackedFile& file : pack.files()) {
        if (!commandLine.isJsonWanted())
            printResult(
                QStringLiteral("packed %1, %2 bytes for %3")
                    .arg(file.file, QString::number(file.packedSize), QString::number(file.size)));
        list.append(QJsonObject{{QStringLiteral("file"), file.file},
                                {QStringLiteral("size"), file.size},
                                {QStringLiteral("packedSize"), file.packedSize}});
    }
    if (commandLine.isJsonWanted())
        printResult(QJsonObject{{QStringLiteral("output"), commandLine.value(outputOption)},
                                {QStringLiteral("dryRun"), commandLine.isDryRun()},
                                {QStringLiteral("files"), list}});
}

ExitStatus runPack(const CommandLine& commandLine)
{
    const QString conflict = findConflict(commandLine);
    if (!conflict.isEmpty())
        return commandLine.refuse(conflict);
    const PackRequest request = requestOf(commandLine);
    if (!checkFolder(request.folderPath) ||
        !checkFolder(request.folderPath + QLatin1Char('/') + request.shortFolder))
        return UnusableInput;
    FolderPack pack(request);
    const bool isDone = canBePacked(pack, request.folderPath) &&
                        handleAll(QStringLiteral("packing"), pack.sources(),
                                  [&](const QString& source) { return pack.pack(source); }) &&
                        (commandLine.isSet(noVerifyOption) || isVerified(request, pack));
    const QString fault = isDone && !commandLine.isDryRun() ? pack.publish() : QString();
    if (!fault.isEmpty())
        printMessage(fault);
    if (!isDone)
        printMessage(QStringLiteral("nothing was written to %1.").arg(request.outputPath));
    if (!isDone || !fault.isEmpty())
        return UnusableInput;
    printFiles(pack, commandLine);
    if (request.comments == PackedComments::Dropped)
        printMessage(QStringLiteral("without comments no URL is listed: 'textmanager urls' and "
                                    "getAvailableUrls() will find none."));
    if (commandLine.isDryRun())
        printMessage(
            QStringLiteral("a dry run: nothing was written to %1.").arg(request.outputPath));
    return Done;
}

} // namespace

Command packCommand()
{
    return {
        {QStringLiteral("pack DIR"),
         QStringLiteral("write a folder for the device, small and quick to load"),
         QStringLiteral(
             "Writes the language files of the folder DIR for a device into the folder that -o "
             "names: each file in one line. A faulty file is refused. Every look-up of the packed "
             "folder is compared with that of DIR before it is called done. The files get the time "
             "of the newest of DIR, so that the same files make the same pack.\n\nThe exit status "
             "is 2, and nothing is written, when something is refused."),
         {{outputOption,
           QStringLiteral("DIR"),
           QStringLiteral("The folder that is written."),
           {},
           {},
           QStringLiteral("o"),
           true},
          {blankOption, {}, QStringLiteral("Empty the comments; URLs are still listed.")},
          {dropOption, {}, QStringLiteral("Leave the comments out; URLs are no longer listed.")},
          {languagesOption, QStringLiteral("KEYS"),
           QStringLiteral("Pack only these languages, such as de_DE,en_US. Standard error says how "
                          "many texts of others they lose.")},
          shortFolderOption(),
          {forceOption, {}, QStringLiteral("Write into a folder that holds something.")},
          {noVerifyOption, {}, QStringLiteral("Do not compare the look-ups.")},
          dryRunOption()},
         QStringLiteral(
             "textmanager pack languages -o packed --short-folder short --blank-comments")},
        runPack};
}
