#include "CommandLine.h"
#include "Commands.h"
#include "Input.h"
#include "JsonParser.h"

#include "TranslateableTextHelper.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

namespace
{

/** The object on standard input; nothing, after a message, when there is none. */
std::optional<QJsonObject> readObject()
{
    const auto input = Input::open(QStringLiteral("-"));
    const auto bytes = input->readAll();
    if (!bytes)
        return std::nullopt;
    QJsonDocument document;
    const auto malformed = parseJson(*bytes, document);
    if (!malformed && document.isObject())
        return document.object();
    const JsonFault fault = malformed.value_or(JsonFault{1, 1, QStringLiteral("found an array")});
    printMessage(
        QStringLiteral("%1. Expected is an object such as {\"POSIX\": \"Save\", \"de_DE\": "
                       "\"Sichern\"}, which 'textmanager all' prints.")
            .arg(fault.in(input->name())));
    return std::nullopt;
}

/** Says what the helper thinks of the object that it was given. */
void reportFaults(const TranslateableTextHelper& helper, const QJsonObject& object)
{
    const QStringList languages = helper.getAvailableLanguages();
    for (const QString& language : object.keys()) {
        if (!languages.contains(language))
            printMessage(QStringLiteral("%1: empty or no text; it is left out.").arg(language));
    }
    if (!helper.isValid())
        printMessage(QStringLiteral("the object is not valid: it has no %1.")
                         .arg(helper.getLastFallbackLanguage()));
}

void reportLanguage(const TranslateableTextHelper& helper, const QString& answering)
{
    const QString wanted = helper.getCurrentLanguage();
    const QStringList languages = helper.getAvailableLanguages();
    if (languages.isEmpty())
        printMessage(QStringLiteral("the object has no text at all."));
    else if (answering.isEmpty())
        printMessage(QStringLiteral("no text in %1, nor in a fallback language; there are: %2.")
                         .arg(wanted, languages.join(QStringLiteral(", "))));
    else if (answering == wanted)
        printMessage(QStringLiteral("%1 answers.").arg(answering));
    else
        printMessage(QStringLiteral("no text in %1, %2 answers.").arg(wanted, answering));
}

ExitStatus runPick(const CommandLine& commandLine)
{
    const auto object = readObject();
    if (!object)
        return UnusableInput;

    TranslateableTextHelper helper(commandLine.language(), nullptr);
    QString answering;
    {
        const SilencedWarnings silenced; // what they say is said below
        helper.setTranslateableTextObject(*object);
        answering = helper.getPossibleLanguage(commandLine.language());
    }
    reportFaults(helper, *object);
    reportLanguage(helper, answering);
    const bool isFound = !answering.isEmpty();
    if (commandLine.isJsonWanted())
        printResult({{QStringLiteral("found"), isFound},
                     {QStringLiteral("text"), helper.currentText()},
                     {QStringLiteral("language"), answering},
                     {QStringLiteral("valid"), helper.isValid()}});
    else if (isFound)
        printResult(helper.currentText());
    return isFound ? Done : AnswerIsNo;
}

} // namespace

Command pickCommand()
{
    return {
        {QStringLiteral("pick"),
         QStringLiteral("choose the text of a language from such an object"),
         QStringLiteral("Reads a translateable text object, as 'textmanager all' prints it, on "
                        "standard input and prints the text of a language. What that does not have "
                        "is taken from en_US, then from POSIX; standard error says which language "
                        "answers. The exit status is 1 when none of them is in the object."),
         {languageOption(QStringLiteral("The wanted language."))},
         QStringLiteral("textmanager all languages Menu/Save | textmanager pick --language ja_JP")},
        runPick};
}
