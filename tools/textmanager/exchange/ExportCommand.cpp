#include "CommandLine.h"
#include "Commands.h"
#include "ExchangeFolder.h"
#include "ExchangeOptions.h"
#include "Folders.h"

#include <QDir>
#include <QJsonArray>
#include <QSaveFile>

#include <algorithm>

namespace
{

using State = ExchangeUnit::State;

const QString allLanguagesOption = QStringLiteral("all-languages");
const QString languageOptionName = QStringLiteral("language");
const QString onlyOption = QStringLiteral("only");
const QString outputOption = QStringLiteral("output");

QStringList selectionNames()
{
    return {QStringLiteral("all"), QStringLiteral("missing"), QStringLiteral("stale")};
}

/** One file that was written. */
struct Written {
    QString path;
    QString language;
    int texts = 0;
    int missing = 0;
    int stale = 0;
};

int count(const ExchangeFile& file, State state)
{
    return static_cast<int>(
        std::count_if(file.units.begin(), file.units.end(),
                      [=](const ExchangeUnit& unit) { return unit.state == state; }));
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    if (path == QLatin1String("-")) {
        printMessage(QStringLiteral("cannot write to standard output, since what is written is "
                                    "told there. Name a file."));
        return false;
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    printMessage(QStringLiteral("%1: cannot be written: %2.").arg(path, file.errorString()));
    return false;
}

/** Exports one language. @return nothing, after a message, when that was not possible. */
std::optional<Written> exportLanguage(const ExchangeFolder& folder, const QString& language,
                                      const QString& path, const ExchangeFormat& format,
                                      ExchangeSelection selection)
{
    QString fault = format.findRefusal(language);
    if (fault.isEmpty() && folder.hasFile(path))
        fault = QStringLiteral("%1 is a file of the folder, which an export would destroy. Name "
                               "another one.")
                    .arg(path);
    const auto texts = fault.isEmpty() ? folder.read(language, fault) : std::nullopt;
    if (!texts) {
        printMessage(fault);
        return std::nullopt;
    }
    const ExchangeFile file = collectUnits(*texts, selection);
    if (!writeFile(path, format.write(file)))
        return std::nullopt;
    return Written{path, language, static_cast<int>(file.units.size()), count(file, State::Missing),
                   count(file, State::Stale)};
}

void print(const QVector<Written>& files, bool isJsonWanted)
{
    QJsonArray list;
    for (const Written& file : files) {
        if (!isJsonWanted)
            printResult(QStringLiteral("%1: %2 of %3, %4 missing, %5 stale")
                            .arg(file.path, counted(file.texts, "text"), file.language,
                                 QString::number(file.missing), QString::number(file.stale)));
        list.append(QJsonObject{{QStringLiteral("file"), file.path},
                                {QStringLiteral("language"), file.language},
                                {QStringLiteral("texts"), file.texts},
                                {QStringLiteral("missing"), file.missing},
                                {QStringLiteral("stale"), file.stale}});
    }
    if (isJsonWanted)
        printResult({{QStringLiteral("files"), list}});
}

/** Why the options do not go together; empty when they do. */
QString findConflict(const CommandLine& commandLine)
{
    if (commandLine.value(outputOption).isEmpty())
        return QStringLiteral("--output is missing.");
    if (commandLine.isSet(allLanguagesOption) == commandLine.isSet(languageOptionName))
        return QStringLiteral("expected either --language or --all-languages.");
    return QString();
}

/** The format of the files of all languages, which have no names yet. */
const ExchangeFormat* formatOfAll(const CommandLine& commandLine)
{
    return ExchangeFormat::byName(commandLine.isSet(asOption().name)
                                      ? commandLine.value(asOption().name)
                                      : ExchangeFormat::names().constFirst());
}

ExitStatus runExport(const CommandLine& commandLine)
{
    const QString conflict = findConflict(commandLine);
    if (!conflict.isEmpty())
        return commandLine.refuse(conflict);
    const QString output = commandLine.value(outputOption);
    const bool areAllWanted = commandLine.isSet(allLanguagesOption);
    const ExchangeFormat* format =
        areAllWanted ? formatOfAll(commandLine) : chooseFormat(commandLine, output);
    const QString folderPath = commandLine.arguments().constFirst();
    if (format == nullptr || !checkFolder(folderPath))
        return UnusableInput;
    const CheckSettings settings = settingsOf(commandLine, folderPath);
    const ExchangeFolder folder(folderPath, settings.shortFolder, settings.base);
    if (commandLine.language() == settings.base)
        return commandLine.refuse(folder.explainUntranslated(settings.base));
    const QString refusal = format->findRefusal(settings.base);
    if (!folder.fault().isEmpty() || !refusal.isEmpty()) {
        printMessage(folder.fault().isEmpty() ? refusal : folder.fault());
        return UnusableInput;
    }
    if (areAllWanted && !QDir().mkpath(output)) {
        printMessage(QStringLiteral("%1: cannot be made a folder.").arg(output));
        return UnusableInput;
    }

    const auto selection =
        static_cast<ExchangeSelection>(selectionNames().indexOf(commandLine.value(onlyOption)));
    const QStringList languages =
        areAllWanted ? folder.translatedLanguages() : QStringList(commandLine.language());
    QVector<Written> files;
    for (const QString& language : languages) {
        const QString path =
            areAllWanted ? QDir(output).filePath(language + QLatin1Char('.') + format->extension())
                         : output;
        if (const auto written = exportLanguage(folder, language, path, *format, selection))
            files.append(*written);
    }
    print(files, commandLine.isJsonWanted());
    return files.size() == languages.size() ? Done : files.isEmpty() ? UnusableInput : AnswerIsNo;
}

} // namespace

Command exportCommand()
{
    return {
        {QStringLiteral("export DIR"),
         QStringLiteral("write texts to a file for a translator's tool"),
         QStringLiteral(
             "Writes the texts of a language in the folder DIR, beside those of the base, to a "
             "file for a translator's own tool: XLIFF (.xlf), PO (.po), or columns for a "
             "spreadsheet (.tsv). 'textmanager import' takes it back.\n\nWith --all-languages "
             "there "
             "is a file for each language that is translated. The exit status is 1 when one of "
             "them could not be written, and 2 when none could."),
         {{languageOptionName, QStringLiteral("KEY"), QStringLiteral("The language to translate.")},
          {allLanguagesOption,
           {},
           QStringLiteral("Write a file for each language, as XLIFF unless --as says otherwise.")},
          {outputOption,
           QStringLiteral("FILE"),
           QStringLiteral("The file to write; with --all-languages the folder of the files."),
           {},
           {},
           QStringLiteral("o")},
          asOption(),
          {onlyOption, QStringLiteral("TEXTS"),
           QStringLiteral("Write only texts that are missing, or only those whose base text has "
                          "changed since they were written."),
           selectionNames().constFirst(), selectionNames()},
          shortFolderOption(),
          baseOption()},
         QStringLiteral("textmanager export languages --language de_DE -o de_DE.xlf\n"
                        "textmanager export languages --all-languages --only missing --as po -o "
                        "for-translators")},
        runExport};
}
