#pragma once

#include "Console.h"

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <optional>

/**
 * What one command may be called with, and was. Every command has --help and, since every one has
 * a result, --format.
 */
class CommandLine
{
public:
    /**
     * @param command the command and its arguments, as in "get DIR URL..."; the last one may be
     * given several times when it ends in "...", and left out when it stands in "[]".
     */
    CommandLine(const QString& command, const QString& description);

    /** Adds "--name VALUE". */
    void addValueOption(const QString& name, const QString& valueName, const QString& description,
                        const QString& defaultValue = QString());
    /** Adds "--name". */
    void addSwitch(const QString& name, const QString& description);
    /** Adds "--language KEY", "en_US" by default. */
    void addLanguageOption(const QString& description);

    /**
     * Takes the words behind the command.
     *
     * @return how the program is to end at once: after --help, or after wrong usage, which it has
     * reported. Nothing when the command is to run.
     */
    std::optional<ExitStatus> parse(const QStringList& words);

    bool isSet(const QString& option) const { return m_Parser.isSet(option); }
    QString value(const QString& option) const { return m_Parser.value(option); }
    /** All values of an option that may be given several times. */
    QStringList values(const QString& option) const { return m_Parser.values(option); }
    QStringList arguments() const { return m_Parser.positionalArguments(); }
    QString language() const { return value(QStringLiteral("language")); }
    bool isJsonWanted() const { return value(QStringLiteral("format")) == QLatin1String("json"); }

    /** Reports wrong usage. @return the exit status for it. */
    ExitStatus refuse(const QString& reason) const;

private:
    QString findFault() const;
    QString helpText() const;

    QString m_StrName;
    QStringList m_ArgumentNames;
    QCommandLineParser m_Parser;
};
