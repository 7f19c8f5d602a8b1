#include "CommandLine.h"
#include "Commands.h"
#include "ExchangeFolder.h"
#include "ExchangeOptions.h"
#include "Folders.h"
#include "NearestNames.h"

#include <QJsonArray>

namespace
{

const QString currentOption = QStringLiteral("current");

QStringList urlsOf(const LanguageTexts& texts)
{
    QStringList urls;
    for (const LanguageTexts::Entry& entry : texts.entries())
        urls.append(entry.url);
    return urls;
}

/** Whether the language has a text at each URL; a message says where not. */
bool areThere(const QStringList& urls, const LanguageTexts& texts)
{
    NameSuggestions suggestions([&] { return urlsOf(texts); });
    bool areAllThere = true;
    for (const QString& url : urls) {
        if (!texts.text(url).isEmpty())
            continue;
        areAllThere = false;
        printMessage(QStringLiteral("%1: there is no text to mark.").arg(url) +
                     suggestions.suggest(url));
    }
    return areAllThere;
}

/** Notes the texts as those of what the base is now. @return those for which that was needed. */
QStringList markAll(const QStringList& urls, const ExchangeTexts& texts, LanguageFileEditor& editor)
{
    QStringList marked;
    for (const QString& url : urls) {
        if (texts.findOldBaseText(url, false))
            marked.append(url);
        editor.noteBaseText(url, texts.baseText(url, false));
    }
    return marked;
}

void print(const QStringList& urls, const QStringList& marked, bool isJsonWanted)
{
    QJsonArray list;
    for (const QString& url : urls) {
        const QString change =
            marked.contains(url) ? QStringLiteral("marked") : QStringLiteral("unchanged");
        if (!isJsonWanted)
            printResult(QStringLiteral("%1 %2").arg(change, url));
        list.append(QJsonObject{{QStringLiteral("change"), change}, {QStringLiteral("name"), url}});
    }
    if (isJsonWanted)
        printResult({{QStringLiteral("changes"), list}});
}

ExitStatus runMark(const CommandLine& commandLine)
{
    if (!commandLine.isSet(currentOption))
        return commandLine.refuse(QStringLiteral("--current is missing."));
    const QStringList arguments = commandLine.arguments();
    const QString& folderPath = arguments.at(0);
    if (!checkFolder(folderPath))
        return UnusableInput;
    const auto editor = openEditor(folderPath, arguments.at(1));
    if (editor == nullptr)
        return UnusableInput;
    QString fault;
    const QString base = BaseTextRecord::readFrom(folderPath, fault).baseLanguage();
    const ExchangeFolder folder(folderPath, QString(),
                                base.isEmpty() ? settingsOf(commandLine, folderPath).base : base);
    if (fault.isEmpty())
        fault = folder.fault();
    const auto texts = fault.isEmpty() ? folder.read(arguments.at(1), fault) : std::nullopt;
    if (!texts) {
        printMessage(fault);
        return UnusableInput;
    }
    const QStringList urls = arguments.mid(2);
    if (!areThere(urls, texts->full.language)) {
        printMessage(QStringLiteral("nothing was changed."));
        return AnswerIsNo;
    }
    const QStringList marked = markAll(urls, *texts, *editor);
    if (!commandLine.isDryRun() && !saveEditor(*editor))
        return UnusableInput;
    print(urls, marked, commandLine.isJsonWanted());
    return Done;
}

} // namespace

Command markCommand()
{
    return {{QStringLiteral("mark DIR LANGUAGE URL..."),
             QStringLiteral("say that texts are still right"),
             QStringLiteral("Says with --current that the text of LANGUAGE at each URL is right "
                            "although its base text has changed: it is no longer stale. No "
                            "language file is changed. The exit status is 1, and nothing is "
                            "changed, when there is no text at a URL."),
             {{currentOption, {}, QStringLiteral("The texts are those of the base text as it is.")},
              dryRunOption(),
              baseOption()},
             QStringLiteral("textmanager mark languages de_DE Menu/Save --current")},
            runMark};
}
