#include "CommandLine.h"
#include "Commands.h"
#include "DeviceMessages.h"
#include "Folders.h"
#include "Input.h"
#include "JsonOutput.h"
#include "JsonParser.h"
#include "JsonTree.h"
#include "LanguageFolder.h"
#include "NearestNames.h"
#include "TextIdTranslation.h"

#include "TextManagerReferenceParameters.h"

#include <QJsonDocument>

#include <utility>

namespace
{

const QLatin1String dataTypeOption("data-type");
const QLatin1String keysOption("keys");
const QLatin1String deleteOption("delete-text-url");
const QLatin1String linesOption("lines");

/** What is wrong with the options that choose the keys; empty when nothing is. */
QString configure(TextIdTranslation& translation, const CommandLine& commandLine)
{
    if (commandLine.isSet(dataTypeOption) == commandLine.isSet(keysOption))
        return QStringLiteral("either --data-type or --keys says which keys to look for.");
    for (const QString& keys : commandLine.values(keysOption)) {
        const QStringList names = keys.split(QLatin1Char(':'));
        if (names.size() < 2 || names.size() > 3 || names.contains(QString()))
            return QStringLiteral("--keys %1: expected TEXTID:TEXT or TEXTID:TEXT:SHORT.")
                .arg(keys);
        translation.addKeys(names.at(0), names.at(1), names.value(2));
    }
    translation.setDataType(commandLine.value(dataTypeOption));
    translation.setDeleteTextUrl(commandLine.isSet(deleteOption));
    return QString();
}

/** @param line of the input that @p bytes begin in, from 1.
 * @return whether there is a document; there is a message when there is none. */
bool parse(const QByteArray& bytes, const QString& inputName, int line, QJsonDocument& document)
{
    auto fault = parseJson(bytes, document);
    if (!fault)
        return true;
    fault->line += line - 1;
    printMessage(fault->in(inputName) + QStringLiteral(". Expected is an object or an array."));
    return false;
}

std::function<QJsonDocument(QJsonDocument)> translating(TextIdTranslation& translation)
{
    return [&](QJsonDocument document) { return translation.translate(std::move(document)); };
}

ExitStatus translateWhole(TextIdTranslation& translation, Input& input,
                          QJsonDocument::JsonFormat format)
{
    auto bytes = input.readAll();
    QJsonDocument document;
    if (!bytes || !parse(*bytes, input.name(), 1, document))
        return UnusableInput;
    bytes.reset(); // it may be large
    printJson(std::move(document), format, translating(translation));
    return Done;
}

/** Whether no object of the line holds a key twice: Qt's parser then loses, but keeps in memory,
 * what the first one held. There is a message when one does. */
bool areKeysUnique(const QByteArray& bytes, const QString& inputName, int line)
{
    const JsonTree tree(bytes);
    if (tree.repeatedKeys().empty())
        return true;
    const int repeated = tree.repeatedKeys().front();
    const JsonFault fault{line, tree.keyPlace(repeated).column,
                          QStringLiteral("the key %1 stands there twice. The line is left out")
                              .arg(tree.pathOf(repeated))};
    printMessage(fault.in(inputName) + QLatin1Char('.'));
    return false;
}

ExitStatus translateLines(TextIdTranslation& translation, Input& input)
{
    ExitStatus status = Done;
    QByteArray bytes;
    for (int line = 1; input.readLine(bytes); ++line) {
        QJsonDocument document;
        if (input.isLineTooLong()) {
            printMessage(QStringLiteral("%1:%2: the line is too long. Write no more than 64 MiB in "
                                        "one.")
                             .arg(input.name())
                             .arg(line));
            status = AnswerIsNo;
            continue;
        }
        if (bytes.trimmed().isEmpty())
            continue;
        if (!areKeysUnique(bytes, input.name(), line) ||
            !parse(bytes, input.name(), line, document)) {
            status = AnswerIsNo;
            continue;
        }
        printJson(std::move(document), QJsonDocument::Compact, translating(translation));
        if (!flushResult())
            return UnusableInput; // which is reported at the end of the program
    }
    return input.isBroken() ? UnusableInput : status;
}

/** @return whether a text id had no text. */
bool reportMisses(const TextIdTranslation& translation, const LanguageFolder& folder,
                  const QString& language)
{
    if (translation.missCount() == 0)
        return false;
    printMessage(QStringLiteral("unknown text ids, for which the empty text was written: %1")
                     .arg(translation.missCount()));
    const QStringList urls = folder.collectAllUrls();
    for (const QString& textId : translation.missedTextIds())
        printMessage(
            QStringLiteral("%1: no text (%2).")
                .arg(textId, folder.explainMiss(textId, LanguageFolder::Wanted::Text, language)) +
            suggestNames(textId, urls));
    return true;
}

ExitStatus runTranslate(const CommandLine& commandLine)
{
    const QStringList arguments = commandLine.arguments();
    const auto folder = openFolder(arguments.first(), commandLine.value(shortFolderOption().name));
    if (!folder)
        return UnusableInput;
    folder->chooseLoadedLanguage(commandLine.language()); // says when it is another one
    const TextManagerReferenceParameters parameters(*folder, commandLine.language());
    TextIdTranslation translation(parameters);
    const QString fault = configure(translation, commandLine);
    if (!fault.isEmpty())
        return commandLine.refuse(fault);
    const auto input = Input::open(arguments.value(1, QStringLiteral("-")));
    if (!input)
        return UnusableInput;

    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) {
        printDeviceMessage(message);
    });
    const ExitStatus status =
        commandLine.isSet(linesOption)
            ? translateLines(translation, *input)
            : translateWhole(translation, *input,
                             commandLine.isJsonWanted() ? QJsonDocument::Compact
                                                        : QJsonDocument::Indented);
    const bool hasMisses = reportMisses(translation, *folder, commandLine.language());
    return status == Done && hasMisses ? AnswerIsNo : status;
}

} // namespace

Command translateCommand()
{
    return {
        {QStringLiteral("translate DIR [FILE]"),
         QStringLiteral("write the texts of their text ids into JSON data"),
         QStringLiteral(
             "Reads JSON data in FILE, or on standard input without one or with '-', and prints "
             "them with the texts of their text ids. What the language does not have is taken from "
             "en_US, then from POSIX. Texts of selectors are read on the bus. The exit status is 1 "
             "when a text id is unknown or a line is malformed."),
         {languageOption(QStringLiteral("The wanted language.")),
          {dataTypeOption,
           QStringLiteral("NAME"),
           QStringLiteral("Look for the keys of a kind of data."),
           {},
           TextIdTranslation::dataTypeNames()},
          {keysOption, QStringLiteral("TEXTID:TEXT[:SHORT]"),
           QStringLiteral("Look for text ids under the key TEXTID; write the text under TEXT and "
                          "the short text under SHORT. A text that is there and not empty is kept. "
                          "May be given several times.")},
          {deleteOption,
           {},
           QStringLiteral("Blank each text id, and each URL of a dynamic label, that was used.")},
          shortFolderOption(),
          {linesOption,
           {},
           QStringLiteral("Read a document on each line and print it, translated, in one line, "
                          "before the next is read.")}},
         QStringLiteral("textmanager translate languages data/SystemInformationData.json "
                        "--data-type SystemInformationData")},
        runTranslate};
}
