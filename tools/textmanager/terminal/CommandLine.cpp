#include "CommandLine.h"

#include "LanguageDefinitions.h"

#include <QCommandLineOption>

CommandLine::CommandLine(const QString& command, const QString& description)
    : m_ArgumentNames(command.split(QLatin1Char(' ')))
{
    m_StrName = m_ArgumentNames.takeFirst();
    m_Parser.setApplicationDescription(description);
    m_Parser.addOption(QCommandLineOption({QStringLiteral("h"), QStringLiteral("help")},
                                          QStringLiteral("Describes the command.")));
    addValueOption(QStringLiteral("format"), QStringLiteral("FORMAT"),
                   QStringLiteral("Format of the result: text or json."), QStringLiteral("text"));
}

void CommandLine::addValueOption(const QString& name, const QString& valueName,
                                 const QString& description, const QString& defaultValue)
{
    const QString byDefault =
        defaultValue.isEmpty() ? QString() : QStringLiteral(" By default %1.").arg(defaultValue);
    m_Parser.addOption(QCommandLineOption(name, description + byDefault, valueName, defaultValue));
}

void CommandLine::addSwitch(const QString& name, const QString& description)
{
    m_Parser.addOption(QCommandLineOption(name, description));
}

void CommandLine::addLanguageOption(const QString& description)
{
    addValueOption(QStringLiteral("language"), QStringLiteral("KEY"), description,
                   LanguageDefinitions::getFirstFallbackLanguageFilename());
}

std::optional<ExitStatus> CommandLine::parse(const QStringList& words)
{
    // The parser takes the program's name for its first word.
    const bool isParsed = m_Parser.parse(QStringList(m_StrName) + words);
    if (m_Parser.isSet(QStringLiteral("help"))) {
        printResult(helpText());
        return Done;
    }
    const QString fault = isParsed ? findFault() : m_Parser.errorText();
    if (!fault.isEmpty())
        return refuse(fault);
    return std::nullopt;
}

ExitStatus CommandLine::refuse(const QString& reason) const
{
    printMessage(QStringLiteral("%1: %2\nSee 'textmanager %1 --help'.").arg(m_StrName, reason));
    return UnusableInput;
}

QString CommandLine::findFault() const
{
    const QString format = value(QStringLiteral("format"));
    if (format != QLatin1String("text") && format != QLatin1String("json"))
        return QStringLiteral("unknown format '%1': it is text or json.").arg(format);

    const QString language = QStringLiteral("language");
    if (m_Parser.optionNames().contains(language) && value(language).isEmpty())
        return QStringLiteral("--language needs a key, such as de_DE.");

    const int given = arguments().size();
    const bool isNextNeeded =
        given < m_ArgumentNames.size() && !m_ArgumentNames.at(given).startsWith(QLatin1Char('['));
    if (isNextNeeded)
        return QStringLiteral("%1 is missing.").arg(m_ArgumentNames.at(given));
    const bool isLastRepeatable =
        !m_ArgumentNames.isEmpty() && m_ArgumentNames.last().endsWith(QLatin1String("..."));
    if (given > m_ArgumentNames.size() && !isLastRepeatable)
        return QStringLiteral("unexpected argument '%1'.")
            .arg(arguments().at(m_ArgumentNames.size()));
    return QString();
}

QString CommandLine::helpText() const
{
    // The parser's own first line shows the program's path and knows nothing of commands.
    const QString help = m_Parser.helpText();
    const QStringList usage = QStringList{m_StrName, QStringLiteral("[options]")} + m_ArgumentNames;
    return QStringLiteral("Usage: textmanager %1").arg(usage.join(QLatin1Char(' '))) +
           help.mid(help.indexOf(QLatin1Char('\n'))).trimmed().prepend(QLatin1Char('\n'));
}
