#include "CommandLine.h"
#include "Commands.h"
#include "ExchangeOptions.h"
#include "Folders.h"
#include "FolderUsage.h"
#include "LanguageFolder.h"
#include "NearestNames.h"
#include "Progress.h"

#include <QJsonArray>

namespace
{

const QString unusedOption = QStringLiteral("unused");
const QString textIdKeyOption = QStringLiteral("text-id-key");

QString placeOf(const PlacedUse& placed)
{
    return QStringLiteral("%1:%2:%3")
        .arg(placed.path, QString::number(placed.use.place.line),
             QString::number(placed.use.place.column));
}

QString describeAtRunTime(const TextUse& use)
{
    return use.url.isEmpty()
               ? QStringLiteral("is made at run time and cannot be told")
               : QStringLiteral("begins with %1, the rest comes at run time").arg(use.url);
}

QJsonArray toJson(const QVector<PlacedUse>& uses)
{
    QJsonArray array;
    for (const PlacedUse& placed : uses)
        array.append(QJsonObject{{QStringLiteral("file"), placed.path},
                                 {QStringLiteral("line"), placed.use.place.line},
                                 {QStringLiteral("column"), placed.use.place.column},
                                 {QStringLiteral("url"), placed.use.url}});
    return array;
}

void printLines(const FolderUsage& usage, const QStringList& unused, const LanguageFolder& folder)
{
    NameSuggestions suggestions([&] { return folder.collectAllUrls(); });
    for (const PlacedUse& placed : usage.unknown())
        printResult(QStringLiteral("%1: unknown %2: no language has it.%3")
                        .arg(placeOf(placed), placed.use.url, suggestions.suggest(placed.use.url)));
    for (const PlacedUse& placed : usage.atRunTime())
        printResult(
            QStringLiteral("%1: the URL %2.").arg(placeOf(placed), describeAtRunTime(placed.use)));
    for (const QString& url : unused)
        printResult(QStringLiteral("unused %1").arg(url));
}

void print(const FolderUsage& usage, const LanguageFolder& folder, const CommandLine& commandLine)
{
    const QStringList unused = commandLine.isSet(unusedOption) ? usage.findUnused() : QStringList();
    if (!commandLine.isJsonWanted()) {
        printLines(usage, unused, folder);
        return;
    }
    QJsonObject result{{QStringLiteral("unknown"), toJson(usage.unknown())},
                       {QStringLiteral("atRunTime"), toJson(usage.atRunTime())}};
    if (commandLine.isSet(unusedOption))
        result.insert(QStringLiteral("unused"), QJsonArray::fromStringList(unused));
    printResult(result);
}

ExitStatus runUsage(const CommandLine& commandLine)
{
    const QString folderPath = commandLine.arguments().constFirst();
    const SourceList sources = listSources(commandLine.arguments().mid(1));
    for (const QString& fault : sources.faults)
        printMessage(fault);
    const auto folder = sources.faults.isEmpty() ? openFolder(folderPath) : nullptr;
    if (!folder)
        return UnusableInput;
    FolderUsage usage(*folder, settingsOf(commandLine, folderPath).base,
                      commandLine.values(textIdKeyOption));
    const bool isRead = handleAll(QStringLiteral("reading"), sources.files,
                                  [&](const SourceFile& source) { return usage.add(source); });
    if (!isRead)
        return UnusableInput;
    print(usage, *folder, commandLine);
    return usage.unknown().isEmpty() ? Done : AnswerIsNo;
}

} // namespace

Command usageCommand()
{
    return {
        {QStringLiteral("usage DIR SOURCES..."),
         QStringLiteral("find the text URLs that sources use"),
         QStringLiteral(
             "Reads C++, QML, JavaScript and JSON, whole folders too, and names each text URL in "
             "use that no language has: the exit status is 1 then. It knows the look-ups of the "
             "library and of the QML module, generated constants, and the text ids of JSON "
             "data.\n\nA URL that is put together at run time cannot be told and is named with its "
             "place; all URLs that begin as it does count as used, and so does each that stands "
             "somewhere as a literal."),
         {{unusedOption, {}, QStringLiteral("List the URLs that nobody uses, too.")},
          {textIdKeyOption, QStringLiteral("NAME"),
           QStringLiteral("A key of JSON data that holds text ids, beside those of the data types; "
                          "may be given several times.")},
          baseOption()},
         QStringLiteral("textmanager usage languages data --unused")},
        runUsage};
}
