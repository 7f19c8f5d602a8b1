#include "CommandLine.h"
#include "Commands.h"
#include "ExchangeFolder.h"
#include "ExchangeOptions.h"
#include "Folders.h"
#include "NearestNames.h"

#include <QJsonArray>

#include <memory>
#include <vector>

namespace
{

const QString currentOption = QStringLiteral("current");

/** One text that is said to be right. */
struct Mark {
    QString url;
    bool isShort = false;
    bool isNeeded = false; ///< whether it was stale
};

QStringList urlsOf(const LanguageTexts& texts)
{
    QStringList urls;
    for (const LanguageTexts::Entry& entry : texts.entries())
        urls.append(entry.url);
    return urls;
}

/** The texts of the language at the URLs, the full and the short ones; nothing, after a message,
 * when a URL has neither. */
std::optional<QVector<Mark>> findMarks(const QStringList& urls, const ExchangeTexts& texts)
{
    QVector<Mark> marks;
    NameSuggestions suggestions([&] { return urlsOf(texts.full.language); });
    bool areAllThere = true;
    for (const QString& url : urls) {
        const auto before = marks.size();
        for (const bool isShort : {false, true}) {
            if (!texts.side(isShort).language.text(url).isEmpty())
                marks.append({url, isShort, texts.findOldBaseText(url, isShort).has_value()});
        }
        if (marks.size() > before)
            continue;
        areAllThere = false;
        printMessage(QStringLiteral("%1: there is no text to mark.").arg(url) +
                     suggestions.suggest(url));
    }
    return areAllThere ? std::make_optional(marks) : std::nullopt;
}

/** Notes the texts as those of what the base is now. @return false, after a message, when that is
 * not possible. */
bool save(const QVector<Mark>& marks, const ExchangeTexts& texts,
          const std::vector<LanguageFileEditor*>& editors)
{
    for (const Mark& mark : marks)
        editors[mark.isShort ? 1 : 0]->noteBaseText(
            {mark.url, texts.baseText(mark.url, mark.isShort)});
    const QString fault = LanguageFileEditor::saveAll(editors);
    if (!fault.isEmpty())
        printMessage(fault);
    return fault.isEmpty();
}

void print(const QVector<Mark>& marks, bool isJsonWanted)
{
    QJsonArray list;
    for (const Mark& mark : marks) {
        const QString change =
            mark.isNeeded ? QStringLiteral("marked") : QStringLiteral("unchanged");
        const QString name =
            mark.isShort ? QStringLiteral("short text of %1").arg(mark.url) : mark.url;
        if (!isJsonWanted)
            printResult(QStringLiteral("%1 %2").arg(change, name));
        list.append(QJsonObject{{QStringLiteral("change"), change},
                                {QStringLiteral("name"), mark.url},
                                {QStringLiteral("short"), mark.isShort}});
    }
    if (isJsonWanted)
        printResult({{QStringLiteral("changes"), list}});
}

/** The folder and the base that its record has, or else the settings. */
ExchangeFolder openExchangeFolder(const CommandLine& commandLine, QString& fault)
{
    const QString& path = commandLine.arguments().constFirst();
    const CheckSettings settings = settingsOf(commandLine, path);
    const QString base = BaseTextRecord::readFrom(path, fault).baseLanguage();
    ExchangeFolder folder(path, settings.shortFolder, base.isEmpty() ? settings.base : base);
    if (fault.isEmpty())
        fault = folder.fault();
    return folder;
}

ExitStatus runMark(const CommandLine& commandLine)
{
    if (!commandLine.isSet(currentOption))
        return commandLine.refuse(QStringLiteral("--current is missing."));
    const QStringList arguments = commandLine.arguments();
    const QString& language = arguments.at(1);
    if (!checkFolder(arguments.at(0)))
        return UnusableInput;
    const auto editor = openEditor(arguments.at(0), language);
    if (editor == nullptr)
        return UnusableInput;
    std::vector<LanguageFileEditor*> editors = {editor.get()};
    QString fault;
    const ExchangeFolder folder = openExchangeFolder(commandLine, fault);
    if (fault.isEmpty())
        fault = folder.explainUntranslated(language);
    const auto texts = fault.isEmpty() ? folder.read(language, fault) : std::nullopt;
    if (!texts) {
        printMessage(fault);
        return UnusableInput;
    }
    const auto marks = findMarks(arguments.mid(2), *texts);
    if (!marks) {
        printMessage(QStringLiteral("nothing was changed."));
        return AnswerIsNo;
    }
    std::unique_ptr<LanguageFileEditor> shortEditor;
    if (!texts->shortTexts.language.entries().isEmpty()) {
        shortEditor = openEditor(folder.shortFolderPath(), language);
        if (shortEditor == nullptr)
            return UnusableInput;
        editors.push_back(shortEditor.get());
    }
    if (!commandLine.isDryRun() && !save(*marks, *texts, editors))
        return UnusableInput;
    print(*marks, commandLine.isJsonWanted());
    return Done;
}

} // namespace

Command markCommand()
{
    return {{QStringLiteral("mark DIR LANGUAGE URL..."),
             QStringLiteral("say that texts are still right"),
             QStringLiteral("Says with --current that the text of LANGUAGE at each URL is right "
                            "although its base text has changed: it is no longer stale. "
                            "With --short-folder the short text there is right, too. No "
                            "language file is changed. The exit status is 1, and nothing is "
                            "changed, when there is no text at a URL."),
             {{currentOption, {}, QStringLiteral("The texts are those of the base text as it is.")},
              shortFolderOption(),
              dryRunOption(),
              baseOption()},
             QStringLiteral("textmanager mark languages de_DE Menu/Save --current")},
            runMark};
}
