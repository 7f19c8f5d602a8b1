#include "CommandLine.h"
#include "Commands.h"
#include "Folders.h"

#include <QDir>
#include <QJsonArray>

namespace
{

QJsonObject toJson(const Finding& finding, const QString& folderPath)
{
    QJsonObject object{{QStringLiteral("file"), QDir(folderPath).filePath(finding.file)},
                       {QStringLiteral("fault"), finding.reason}};
    if (finding.place.line > 0) {
        object.insert(QStringLiteral("line"), finding.place.line);
        object.insert(QStringLiteral("column"), finding.place.column);
    }
    return object;
}

void printLanguages(const LanguageFolder& folder, const QVector<Finding>& findings,
                    bool isJsonWanted)
{
    const QStringList languages = folder.getAvailableLanguages();
    if (isJsonWanted) {
        QJsonArray leftOut;
        for (const Finding& finding : findings)
            leftOut.append(toJson(finding, folder.getLanguagePath()));
        printResult({{QStringLiteral("languages"), QJsonArray::fromStringList(languages)},
                     {QStringLiteral("leftOut"), leftOut}});
        return;
    }
    for (const QString& language : languages)
        printResult(language);
}

ExitStatus runLanguages(const CommandLine& commandLine)
{
    QVector<Finding> findings;
    const auto folder = openFolder(commandLine.arguments().constFirst(), QString(), &findings);
    if (!folder)
        return UnusableInput;

    printLanguages(*folder, findings, commandLine.isJsonWanted());
    if (folder->getAvailableLanguages().isEmpty())
        printMessage(
            QStringLiteral("no language file in '%1'.").arg(commandLine.arguments().constFirst()));
    const bool isSound = findings.isEmpty() && !folder->getAvailableLanguages().isEmpty();
    return isSound ? Done : AnswerIsNo;
}

} // namespace

Command languagesCommand()
{
    return {{QStringLiteral("languages DIR"),
             QStringLiteral("list the languages of a folder, and its faulty files"),
             QStringLiteral("Lists the languages of the folder DIR, and on standard error every "
                            "file that is left out, with the place of its fault. The exit status "
                            "is 1 when there is such a file, or no language at all."),
             {},
             QStringLiteral("textmanager languages languages")},
            runLanguages};
}
