#include "CheckList.h"
#include "CheckReports.h"
#include "CommandLine.h"
#include "Commands.h"
#include "NearestNames.h"
#include "Progress.h"
#include "Terminal.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace
{

const QString baseOption = QStringLiteral("base");
const QString failOnOption = QStringLiteral("fail-on");
const QString failUnderOption = QStringLiteral("fail-under");
const QString ignoreOption = QStringLiteral("ignore");
const QString languageKeyOption = QStringLiteral("language");
const QString shortLengthOption = QStringLiteral("short-length");
const QString htmlOption = QStringLiteral("html");

/** Takes over what the command line says above what the file of settings says. @return what is
 * wrong with it; empty when nothing is. */
QString readOptions(const CommandLine& commandLine, CheckSettings& settings)
{
    if (commandLine.isSet(baseOption))
        settings.base = commandLine.value(baseOption);
    if (commandLine.isSet(shortFolderOption().name))
        settings.shortFolder = commandLine.value(shortFolderOption().name);
    if (commandLine.isSet(failOnOption))
        readClass(commandLine.value(failOnOption), settings.failOn);
    settings.languages = commandLine.values(languageKeyOption);

    bool isNumber = true;
    if (commandLine.isSet(shortLengthOption))
        settings.shortLength = commandLine.value(shortLengthOption).toInt(&isNumber);
    if (!isNumber || (commandLine.isSet(shortLengthOption) && settings.shortLength < 1))
        return QStringLiteral("--short-length needs a number of characters from 1.");
    if (commandLine.isSet(failUnderOption))
        settings.failUnder = commandLine.value(failUnderOption).toDouble(&isNumber);
    // Written so that what is no number at all is refused, too.
    if (!isNumber ||
        (settings.failUnder && !(*settings.failUnder >= 0 && *settings.failUnder <= 100)))
        return QStringLiteral("--fail-under needs a share from 0 to 100, in per cent.");
    for (const QString& text : commandLine.values(ignoreOption)) {
        const IgnoreRule rule(text);
        if (!rule.fault().isEmpty())
            return QStringLiteral("--ignore: ") + rule.fault();
        settings.ignore.append(rule);
    }
    return QString();
}

/** Why the folder has not the languages that are asked for; empty when it has. */
QString findMissingLanguage(const LanguageCatalog& catalog, const CheckSettings& settings)
{
    QStringList keys;
    for (const CatalogFile& file : catalog.files()) {
        if (!file.language.isEmpty())
            keys.append(file.language);
    }
    keys.removeDuplicates();
    if (!keys.contains(settings.base))
        return QStringLiteral("there is no file of the base language '%1'; name another one with "
                              "--base. There are: %2.")
            .arg(settings.base,
                 keys.isEmpty() ? QStringLiteral("none") : keys.join(QStringLiteral(", ")));
    for (const QString& key : settings.languages) {
        if (!keys.contains(key))
            return QStringLiteral("there is no file of the language '%1'.").arg(key) +
                   suggestNames(key, keys);
    }
    return QString();
}

/** @return false, after a message, when the page could not be written. */
bool writePage(const QString& path, const QByteArray& page)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(page) == page.size() && file.commit())
        return true;
    printMessage(QStringLiteral("cannot write %1: %2.").arg(path, file.errorString()));
    return false;
}

void printReport(const CommandLine& commandLine, const CheckResult& result,
                 const CheckSettings& settings, const QString& folder)
{
    const QString format = commandLine.value(formatOption().name);
    if (format == QLatin1String("json"))
        printResult(toJson(result));
    else if (format == QLatin1String("sarif"))
        printResult(toSarif(result, folder));
    else if (isColourWanted())
        printPaintedResult(toText(result, settings, true));
    else
        printResult(toText(result, settings, false));
}

CheckResult checkAll(const LanguageCatalog& catalog, const CheckSettings& settings)
{
    Progress progress(QStringLiteral("checking"));
    int begun = 0;
    const int all = static_cast<int>(catalog.files().size());
    return checkFolder(catalog, settings, [&] { progress.show(begun++, all); });
}

ExitStatus checkFolders(const CommandLine& commandLine, const QString& folder,
                        const CheckSettings& settings)
{
    const QStringList subFolders = {QString(), settings.shortFolder};
    for (const QString& subFolder : subFolders) {
        const QString fault =
            LanguageCatalog::findFolderFault(folder + QLatin1Char('/') + subFolder);
        if (fault.isEmpty())
            continue;
        printMessage(fault);
        return UnusableInput;
    }
    const LanguageCatalog catalog(folder, settings.shortFolder);
    const QString missing = findMissingLanguage(catalog, settings);
    if (!missing.isEmpty()) {
        printMessage(missing);
        return UnusableInput;
    }
    const CheckResult result = checkAll(catalog, settings);
    if (commandLine.isSet(htmlOption) &&
        !writePage(commandLine.value(htmlOption),
                   toHtml(result, catalog, settings, QDir(folder).dirName())))
        return UnusableInput;
    printReport(commandLine, result, settings, folder);
    return result.isFailed(settings) ? AnswerIsNo : Done;
}

ExitStatus runCheck(const CommandLine& commandLine)
{
    const QString folder = commandLine.arguments().constFirst();
    const QString fault = LanguageCatalog::findFolderFault(folder);
    if (!fault.isEmpty()) {
        printMessage(fault);
        return UnusableInput;
    }
    CheckSettings settings;
    settings.readFrom(folder);
    const QString wrongUse = readOptions(commandLine, settings);
    if (!wrongUse.isEmpty())
        return commandLine.refuse(wrongUse);
    return checkFolders(commandLine, folder, settings);
}

/** "Errors: bad-settings (...), ..." for each class. */
QString describeChecks()
{
    QStringList paragraphs;
    for (const auto findingClass :
         {Finding::Class::Error, Finding::Class::Warning, Finding::Class::Info}) {
        QStringList ids;
        for (const CheckDescription& check : allChecks()) {
            if (check.findingClass == findingClass)
                ids.append(check.id);
        }
        paragraphs.append(QStringLiteral("Findings of the class %1: %2.")
                              .arg(nameOf(findingClass), ids.join(QStringLiteral(", "))));
    }
    return paragraphs.join(QStringLiteral("\n\n"));
}

} // namespace

Command checkCommand()
{
    return {
        {QStringLiteral("check DIR"),
         QStringLiteral("find what is missing or wrong in the texts"),
         QStringLiteral(
             "Holds all languages of the folder DIR against the base language, and tells what is "
             "missing or wrong, with its place. The exit status is 1 when something is found that "
             "is heavy enough (--fail-on), or a language has too few texts (--fail-under).\n\n"
             "The same settings may stand in the folder, in .textmanager-check.json. Options go "
             "before them; rules of --ignore are added to them.\n\n") +
             describeChecks(),
         {{baseOption, QStringLiteral("KEY"),
           QStringLiteral(
               "The language that all are held against; en_US when nothing else is said.")},
          shortFolderOption(),
          {shortLengthOption, QStringLiteral("N"),
           QStringLiteral("What a short text may have at most, in characters.")},
          {languageKeyOption, QStringLiteral("KEY"),
           QStringLiteral("Tell of this language only; may be given several times.")},
          {ignoreOption, QStringLiteral("ID[:URL-PATTERN]"),
           QStringLiteral("Leave out these findings, at some URLs or at all; may be given several "
                          "times. In the pattern, * stands for anything within a key, ** across "
                          "keys.")},
          {failOnOption,
           QStringLiteral("CLASS"),
           QStringLiteral(
               "The lightest class that makes the check fail; error when nothing else is "
               "said."),
           QString(),
           {QStringLiteral("error"), QStringLiteral("warning"), QStringLiteral("info")}},
          {failUnderOption, QStringLiteral("PERCENT"),
           QStringLiteral("Fail when a language has less than this share of the base's texts.")},
          {htmlOption, QStringLiteral("FILE"),
           QStringLiteral("Write a page for a browser as well, which needs no other file.")},
          formatOption({QStringLiteral("text"), QStringLiteral("json"), QStringLiteral("sarif")})},
         QStringLiteral("textmanager check languages --short-folder short "
                        "--ignore 'same-as-base:Units/**' --html findings.html")},
        runCheck};
}
