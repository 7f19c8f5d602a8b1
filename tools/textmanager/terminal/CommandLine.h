#pragma once

#include "Console.h"
#include "Description.h"

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <optional>

/** What one command was called with, held against what it may be called with. */
class CommandLine
{
public:
    explicit CommandLine(const CommandDescription& description);

    /**
     * Takes the words behind the command.
     *
     * @return how the program is to end at once: after --help, or after wrong usage, which it has
     * reported. Nothing when the command is to run.
     */
    std::optional<ExitStatus> parse(const QStringList& words);

    /** Whether the option was given; never, for one that the command does not have. */
    bool isSet(const QString& option) const;
    QString value(const QString& option) const { return m_Parser.value(option); }
    /** All values of an option that may be given several times. */
    QStringList values(const QString& option) const { return m_Parser.values(option); }
    QStringList arguments() const { return m_Parser.positionalArguments(); }
    QString language() const { return value(QStringLiteral("language")); }
    bool isJsonWanted() const { return value(QStringLiteral("format")) == QLatin1String("json"); }

    bool isDryRun() const { return isSet(QStringLiteral("dry-run")); }

    /** Reports wrong usage. @return the exit status for it. */
    ExitStatus refuse(const QString& reason) const;

private:
    QString findFault() const;

    const CommandDescription m_Description;
    QCommandLineParser m_Parser;
};

// Options that several commands have.

/** "--format FORMAT", which every command has. */
OptionDescription formatOption(const QStringList& formats = {QStringLiteral("text"),
                                                             QStringLiteral("json")});
/** "--language KEY", "en_US" by default. */
OptionDescription languageOption(const QString& summary);
/** "--dry-run", which every command that writes has. */
OptionDescription dryRunOption();
/** "--short-folder NAME" */
OptionDescription shortFolderOption();
