#include "CommandLine.h"
#include "Commands.h"
#include "Folders.h"
#include "NearestNames.h"

#include <QJsonArray>

namespace
{

using Wanted = LanguageFolder::Wanted;
using Answer = LanguageFolder::Answer;

const QLatin1String shortOption("short");
const QLatin1String commentOption("comment");

/** What one call of the command asks for. */
struct Request {
    Wanted wanted = Wanted::Text;
    QString language;
};

QString nameOf(Wanted wanted)
{
    return wanted == Wanted::Comment ? QStringLiteral("comment") : QStringLiteral("text");
}

void reportLanguage(const LanguageFolder& folder, const QString& language)
{
    const QStringList loaded = folder.getAvailableLanguages();
    if (!loaded.contains(language))
        printMessage(QStringLiteral("language '%1' is not loaded.").arg(language) +
                     suggestNames(language, loaded));
}

void reportMiss(const LanguageFolder& folder, const QString& url, const Request& request)
{
    printMessage(QStringLiteral("%1: no %2 (%3).")
                     .arg(url, nameOf(request.wanted),
                          folder.explainMiss(url, request.wanted, request.language)) +
                 suggestNames(url, folder.collectAllUrls()));
}

void reportSubstitute(const QString& url, const Answer& answer, const Request& request)
{
    if (request.wanted == Wanted::ShortText && !answer.isShortText)
        printMessage(QStringLiteral("%1: no short text in %2, the full text of %3 answers.")
                         .arg(url, request.language, answer.language));
    else if (answer.language != request.language)
        printMessage(QStringLiteral("%1: no %2 in %3, %4 answers.")
                         .arg(url, nameOf(request.wanted), request.language, answer.language));
}

QJsonObject toJson(const QString& url, const Answer& answer, const Request& request)
{
    QJsonObject object{{QStringLiteral("url"), url},
                       {QStringLiteral("found"), answer.isFound()},
                       {nameOf(request.wanted), answer.text},
                       {QStringLiteral("language"), answer.language}};
    if (request.wanted == Wanted::ShortText)
        object.insert(QStringLiteral("isShortText"), answer.isShortText);
    return object;
}

ExitStatus answerUrls(const LanguageFolder& folder, const QStringList& urls, const Request& request,
                      bool isJsonWanted)
{
    reportLanguage(folder, request.language);
    ExitStatus status = Done;
    QJsonArray answers;
    for (const QString& url : urls) {
        const Answer answer = folder.lookUp(url, request.wanted, request.language);
        if (answer.isFound()) {
            reportSubstitute(url, answer, request);
        } else {
            reportMiss(folder, url, request);
            status = AnswerIsNo;
        }
        if (isJsonWanted)
            answers.append(toJson(url, answer, request));
        else if (answer.isFound() || urls.size() > 1)
            printResult(answer.text); // a line for each of several, empty for one without a text
    }
    if (isJsonWanted)
        printResult({{QStringLiteral("answers"), answers}});
    return status;
}

ExitStatus runGet(const CommandLine& commandLine)
{
    if (commandLine.isSet(shortOption) && commandLine.isSet(commentOption))
        return commandLine.refuse(QStringLiteral("--short and --comment exclude each other."));
    if (commandLine.isSet(shortOption) && commandLine.value(shortFolderOption().name).isEmpty())
        return commandLine.refuse(QStringLiteral("--short needs --short-folder NAME."));

    const QStringList arguments = commandLine.arguments();
    const auto folder = openFolder(arguments.first(), commandLine.value(shortFolderOption().name));
    if (!folder)
        return UnusableInput;
    const Wanted wanted = commandLine.isSet(shortOption)     ? Wanted::ShortText
                          : commandLine.isSet(commentOption) ? Wanted::Comment
                                                             : Wanted::Text;
    return answerUrls(*folder, arguments.mid(1), {wanted, commandLine.language()},
                      commandLine.isJsonWanted());
}

} // namespace

Command getCommand()
{
    return {
        {QStringLiteral("get DIR URL..."),
         QStringLiteral("print texts, short texts or comments by URL"),
         QStringLiteral("Prints the text of each URL. What the wanted language does not have is "
                        "taken from en_US, then from POSIX, and standard error says so. The exit "
                        "status is 1 when a text is found in none of them, and standard error "
                        "names the nearest URLs; of several URLs that one gets an empty line."),
         {languageOption(QStringLiteral("The wanted language.")),
          shortFolderOption(),
          {shortOption,
           {},
           QStringLiteral("Print the short text, or the full text where there is none.")},
          {commentOption, {}, QStringLiteral("Print the comment for translators.")}},
         QStringLiteral("textmanager get languages Menu/Save Alarms/Acknowledge --language ja_JP")},
        runGet};
}
