#include "CommandLine.h"
#include "Commands.h"
#include "ExchangeFolder.h"
#include "ExchangeOptions.h"
#include "Folders.h"
#include "Input.h"
#include "LanguageImport.h"
#include "LanguageTags.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

#include <algorithm>
#include <memory>
#include <vector>

namespace
{

const QString forceOption = QStringLiteral("force");
const QString staleOption = QStringLiteral("stale");

QString placeIn(const QString& path, const Place& place)
{
    return place.line == 0 ? Input::nameOf(path)
                           : QStringLiteral("%1:%2:%3")
                                 .arg(Input::nameOf(path))
                                 .arg(place.line)
                                 .arg(place.column);
}

/** Reads a file; nothing, after a message, when it cannot be read. */
std::optional<ExchangeFile> readFile(const QString& path, const CommandLine& commandLine)
{
    const ExchangeFormat* format = chooseFormat(commandLine, path);
    const auto input = format != nullptr ? Input::open(path) : nullptr;
    const std::optional<QByteArray> bytes = input ? input->readAll() : std::nullopt;
    if (!bytes)
        return std::nullopt;
    ExchangeFile file;
    if (const auto fault = format->read(*bytes, file)) {
        printMessage(QStringLiteral("%1: %2").arg(placeIn(path, fault->place), fault->reason));
        return std::nullopt;
    }
    return file;
}

/** Why the texts of a file belong into none of the folder's languages; empty when they do. */
QString findOtherLanguage(const ExchangeFile& file, const ExchangeFolder& folder,
                          const QString& baseLanguage)
{
    if (!file.baseLanguage.isEmpty() && !isSameLanguage(file.baseLanguage, baseLanguage))
        return QStringLiteral("is translated from '%1', and the base is '%2'. Name the right one "
                              "with --base.")
            .arg(file.baseLanguage, baseLanguage);
    if (file.language.isEmpty())
        return QStringLiteral("does not say what language it is of. Name it with --language.");
    const QString language = folder.findLanguage(file.language);
    if (language == baseLanguage)
        return QStringLiteral("is of the base language '%1', which is not translated.")
            .arg(baseLanguage);
    return language.isEmpty()
               ? QStringLiteral("is of '%1', and there is no such language. Name the right one "
                                "with --language, or start it with 'textmanager new'.")
                     .arg(file.language)
               : QString();
}

/** What is the same for a language and one that is a link to it. */
QString placeOf(const QString& language, const ExchangeFolder& folder)
{
    const QFileInfo file(QDir(folder.path()).filePath(language + QStringLiteral(".json")));
    const QString path = file.canonicalFilePath();
    return path.isEmpty() ? language : path;
}

/** The imports of all files that can be used; a message says why the others cannot. */
std::vector<std::unique_ptr<LanguageImport>>
openAll(const ExchangeFolder& folder, const QString& baseLanguage, const CommandLine& commandLine)
{
    const ImportOptions options{commandLine.isSet(staleOption), commandLine.isSet(forceOption)};
    std::vector<std::unique_ptr<LanguageImport>> imports;
    QStringList places;
    for (const QString& path : commandLine.arguments().mid(1)) {
        std::optional<ExchangeFile> file = readFile(path, commandLine);
        if (!file)
            continue;
        if (commandLine.isSet(QStringLiteral("language")))
            file->language = commandLine.language();
        QString fault = findOtherLanguage(*file, folder, baseLanguage);
        const QString language = folder.findLanguage(file->language);
        const QString place = placeOf(language, folder);
        if (fault.isEmpty() && places.contains(place))
            fault = QStringLiteral("is of '%1', as a file before it. Import one after the other.")
                        .arg(language);
        if (fault.isEmpty()) {
            places.append(place);
            auto import = LanguageImport::open(folder, language, *file, options, fault);
            if (import != nullptr) {
                import->setName(path);
                imports.push_back(std::move(import));
                continue;
            }
        }
        if (!fault.isEmpty())
            printMessage(QStringLiteral("%1: %2").arg(Input::nameOf(path), fault));
    }
    return imports;
}

QString nameOf(LanguageImport::Change::Kind kind)
{
    using Kind = LanguageImport::Change::Kind;
    return kind == Kind::Added     ? QStringLiteral("added")
           : kind == Kind::Changed ? QStringLiteral("changed")
                                   : QStringLiteral("confirmed");
}

QString nameOf(const LanguageImport::Change& change)
{
    return change.isShort ? QStringLiteral("short text of %1").arg(change.url) : change.url;
}

/** How many texts are left as they are, and how many of these are stale all the same. */
QString describeSame(const LanguageImport& import)
{
    const QString same = QStringLiteral("%1 there already").arg(import.sameCount());
    return import.staleCount() > 0
               ? same +
                     QStringLiteral(", %1 of them of an older base text").arg(import.staleCount())
               : same;
}

int countChanges(const LanguageImport& import, bool areConfirmed)
{
    return static_cast<int>(std::count_if(
        import.changes().begin(), import.changes().end(),
        [=](const LanguageImport::Change& change) {
            return (change.kind == LanguageImport::Change::Kind::Confirmed) == areConfirmed;
        }));
}

void printText(const LanguageImport& import, bool isDryRun)
{
    for (const LanguageImport::Change& change : import.changes())
        printResult(QStringLiteral("%1: %2 %3")
                        .arg(import.language(), nameOf(change.kind), nameOf(change)));
    for (const ExchangeFault& fault : import.leftOut())
        printMessage(
            QStringLiteral("%1: %2").arg(placeIn(import.name(), fault.place), fault.reason));
    const int confirmed = countChanges(import, true);
    printMessage(
        QStringLiteral("%1: %2 %3 %4, %5%6, %7 left out.")
            .arg(Input::nameOf(import.name()), counted(countChanges(import, false), "text"),
                 isDryRun ? QStringLiteral("would be written to") : QStringLiteral("written to"),
                 import.language(),
                 confirmed > 0 ? QStringLiteral("%1 confirmed, ").arg(confirmed) : QString(),
                 describeSame(import), QString::number(import.leftOut().size())));
}

QJsonObject toJson(const LanguageImport& import)
{
    QJsonArray changes;
    for (const LanguageImport::Change& change : import.changes())
        changes.append(QJsonObject{{QStringLiteral("change"), nameOf(change.kind)},
                                   {QStringLiteral("name"), change.url},
                                   {QStringLiteral("short"), change.isShort}});
    QJsonArray leftOut;
    for (const ExchangeFault& fault : import.leftOut())
        leftOut.append(QJsonObject{{QStringLiteral("line"), fault.place.line},
                                   {QStringLiteral("column"), fault.place.column},
                                   {QStringLiteral("reason"), fault.reason}});
    return {{QStringLiteral("file"), import.name()},
            {QStringLiteral("language"), import.language()},
            {QStringLiteral("changes"), changes},
            {QStringLiteral("same"), import.sameCount()},
            {QStringLiteral("stale"), import.staleCount()},
            {QStringLiteral("leftOut"), leftOut}};
}

ExitStatus runImport(const CommandLine& commandLine)
{
    const QStringList arguments = commandLine.arguments();
    if (!checkFolder(arguments.constFirst()))
        return UnusableInput;
    const CheckSettings settings = settingsOf(commandLine, arguments.constFirst());
    const ExchangeFolder folder(arguments.constFirst(), settings.shortFolder, settings.base);
    if (!folder.fault().isEmpty()) {
        printMessage(folder.fault());
        return UnusableInput;
    }
    const auto imports = openAll(folder, settings.base, commandLine);
    QString fault;
    if (!commandLine.isDryRun() && !LanguageImport::save(imports, fault)) {
        if (!fault.isEmpty())
            printMessage(fault);
        return UnusableInput;
    }
    QJsonArray files;
    QString::size_type used = 0;
    bool isAllTaken = static_cast<int>(imports.size()) == arguments.size() - 1;
    for (const auto& import : imports) {
        if (!commandLine.isJsonWanted())
            printText(*import, commandLine.isDryRun());
        files.append(toJson(*import));
        used += import->changes().size() + import->sameCount();
        isAllTaken = isAllTaken && import->leftOut().isEmpty();
    }
    if (commandLine.isJsonWanted())
        printResult(QJsonObject{{QStringLiteral("dryRun"), commandLine.isDryRun()},
                                {QStringLiteral("files"), files}});
    return isAllTaken ? Done : used > 0 ? AnswerIsNo : UnusableInput;
}

} // namespace

Command importCommand()
{
    return {
        {QStringLiteral("import DIR FILE..."),
         QStringLiteral("take texts back that were exported"),
         QStringLiteral(
             "Takes the texts of each FILE, as XLIFF, PO or TSV, into the language that it names "
             "in the folder DIR. Only texts are written: never a comment, never the base, and "
             "nothing is emptied. What is taken is saved in all languages, or in none.\n\nTexts "
             "that are gone, whose base text has changed since the export, or in whose "
             "placeholders, "
             "markup or message 'check' finds an error, are left out, and listed with file and "
             "line. The "
             "exit status is 0 when all were taken, 1 when something was left out, and 2 when "
             "nothing could be used; nothing is changed then."),
         {{staleOption,
           {},
           QStringLiteral("Take texts whose base text has changed, and those that are marked as "
                          "to be looked at again. What was stale stays so.")},
          {forceOption, {}, QStringLiteral("Take texts in which 'check' finds an error.")},
          dryRunOption(),
          {QStringLiteral("language"), QStringLiteral("KEY"),
           QStringLiteral("The language that the files are of, whatever they say.")},
          asOption(),
          shortFolderOption(),
          baseOption()},
         QStringLiteral("textmanager import languages de_DE.xlf --dry-run\n"
                        "textmanager import languages de_DE.xlf")},
        runImport};
}
