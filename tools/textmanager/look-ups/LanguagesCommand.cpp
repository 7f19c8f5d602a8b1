#include "CommandLine.h"
#include "Commands.h"
#include "LanguageFolder.h"

#include <QJsonArray>

namespace
{

QJsonObject toJson(const FileFinding& finding)
{
    QJsonObject object{{QStringLiteral("file"), finding.path},
                       {QStringLiteral("fault"), finding.fault}};
    if (finding.line > 0) {
        object.insert(QStringLiteral("line"), finding.line);
        object.insert(QStringLiteral("column"), finding.column);
    }
    return object;
}

void printLanguages(const LanguageFolder& folder, bool isJsonWanted)
{
    const QStringList languages = folder.getAvailableLanguages();
    if (isJsonWanted) {
        QJsonArray leftOut;
        for (const FileFinding& finding : folder.getLeftOutFiles())
            leftOut.append(toJson(finding));
        printResult({{QStringLiteral("languages"), QJsonArray::fromStringList(languages)},
                     {QStringLiteral("leftOut"), leftOut}});
        return;
    }
    for (const QString& language : languages)
        printResult(language);
}

ExitStatus runLanguages(const CommandLine& commandLine)
{
    const auto folder = LanguageFolder::open(commandLine.arguments().first());
    if (!folder)
        return UnusableInput;

    printLanguages(*folder, commandLine.isJsonWanted());
    if (folder->getAvailableLanguages().isEmpty())
        printMessage(
            QStringLiteral("no language file in '%1'.").arg(commandLine.arguments().first()));
    const bool isSound =
        folder->getLeftOutFiles().isEmpty() && !folder->getAvailableLanguages().isEmpty();
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
