#include "CommandLine.h"

#include "HelpText.h"
#include "LanguageReading.h"
#include "NearestNames.h"

#include "LanguageDefinitions.h"

#include <QCommandLineOption>

#include <algorithm>

CommandLine::CommandLine(const CommandDescription& description)
    : m_Description(description)
{
    for (const OptionDescription& option : description.options) {
        QStringList names = {option.name};
        if (!option.shortName.isEmpty())
            names.prepend(option.shortName);
        m_Parser.addOption(
            QCommandLineOption(names, option.summary, option.valueName, option.defaultValue));
    }
}

std::optional<ExitStatus> CommandLine::parse(const QStringList& words)
{
    // The parser takes the program's name for its first word.
    const bool isParsed = m_Parser.parse(QStringList(m_Description.name()) + words);
    if (m_Parser.isSet(helpOption().name)) {
        printResult(helpText(m_Description, QStringLiteral("textmanager")));
        return Done;
    }
    const QString fault = isParsed ? findFault() : m_Parser.errorText();
    if (!fault.isEmpty())
        return refuse(fault);
    return std::nullopt;
}

bool CommandLine::isSet(const QString& option) const
{
    const auto& options = m_Description.options;
    return std::any_of(options.begin(), options.end(),
                       [&](const OptionDescription& one) { return one.name == option; }) &&
           m_Parser.isSet(option);
}

ExitStatus CommandLine::refuse(const QString& reason) const
{
    printMessage(
        QStringLiteral("%1: %2\nSee 'textmanager %1 --help'.").arg(m_Description.name(), reason));
    return UnusableInput;
}

QString CommandLine::findFault() const
{
    for (const OptionDescription& option : m_Description.options) {
        const QString given = value(option.name);
        if (option.isRequired && given.isEmpty())
            return QStringLiteral("--%1 %2 is missing.").arg(option.name, option.valueName);
        if (!option.choices.isEmpty() && isSet(option.name) && !option.choices.contains(given))
            return QStringLiteral("unknown %1 '%2': it is one of %3.")
                       .arg(option.name, given, option.choices.join(QStringLiteral(", "))) +
                   suggestNames(given, option.choices);
        if (option.name == QLatin1String("language") && isSet(option.name) && given.isEmpty())
            return QStringLiteral("--language needs a key, such as de_DE.");
        if (option.name == shortFolderOption().name && !given.isEmpty() && !isSubFolder(given))
            return QStringLiteral(
                       "--short-folder '%1' is no folder below DIR: give its name there, "
                       "such as short.")
                .arg(given);
    }

    const QStringList argumentNames = m_Description.argumentNames();
    const auto given = arguments().size();
    const bool isNextNeeded =
        given < argumentNames.size() && !argumentNames.at(given).startsWith(QLatin1Char('['));
    if (isNextNeeded)
        return QStringLiteral("%1 is missing.").arg(argumentNames.at(given));
    const bool isLastRepeatable =
        !argumentNames.isEmpty() && argumentNames.last().endsWith(QLatin1String("..."));
    if (given > argumentNames.size() && !isLastRepeatable)
        return QStringLiteral("unexpected argument '%1'.")
            .arg(arguments().at(argumentNames.size()));
    return QString();
}

OptionDescription formatOption(const QStringList& formats)
{
    return {QStringLiteral("format"), QStringLiteral("FORMAT"),
            QStringLiteral("Format of the result."), QStringLiteral("text"), formats};
}

OptionDescription languageOption(const QString& summary)
{
    return {QStringLiteral("language"), QStringLiteral("KEY"), summary,
            LanguageDefinitions::getFirstFallbackLanguageFilename()};
}

OptionDescription dryRunOption()
{
    return {
        QStringLiteral("dry-run"), {}, QStringLiteral("Print what would be done; write nothing.")};
}

OptionDescription shortFolderOption()
{
    return {QStringLiteral("short-folder"), QStringLiteral("NAME"),
            QStringLiteral("The sub-folder of DIR that holds the short texts.")};
}
