#include "ManPage.h"

#include "HelpText.h"

namespace
{

/** The text as roff shows it letter for letter. */
QString escaped(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\e"));
    text.replace(QLatin1Char('-'), QStringLiteral("\\-"));
    text.replace(QLatin1Char('\''), QStringLiteral("\\(aq"));
    text.replace(QLatin1Char('"'), QStringLiteral("\\(dq"));
    text.replace(QLatin1Char('^'), QStringLiteral("\\(ha"));
    text.replace(QLatin1Char('~'), QStringLiteral("\\(ti"));
    text.replace(QLatin1Char('`'), QStringLiteral("\\(ga"));
    if (text.startsWith(QLatin1Char('.')))
        text.prepend(QStringLiteral("\\&")); // no request of roff's
    return text;
}

QString section(const QString& title)
{
    return QStringLiteral(".SH %1\n").arg(title);
}

QString paragraphs(const QString& text)
{
    QStringList result;
    for (const QString& paragraph : text.split(QStringLiteral("\n\n")))
        result.append(escaped(paragraph) + QLatin1Char('\n'));
    return result.join(QStringLiteral(".PP\n"));
}

QString options(const CommandDescription& command)
{
    QString text;
    for (const OptionDescription& option : command.options)
        text += QStringLiteral(".TP\n\\fB%1\\fR\n").arg(escaped(nameOf(option))) +
                escaped(summaryOf(option)) + QLatin1Char('\n');
    return text;
}

QString example(const CommandDescription& command)
{
    QString text = QStringLiteral(".nf\n.RS\n");
    for (const QString& line : command.example.split(QLatin1Char('\n')))
        text += QStringLiteral("$ ") + escaped(line) + QLatin1Char('\n');
    return text + QStringLiteral(".RE\n.fi\n");
}

QString head(const QString& name, const QString& summary, const QString& usage)
{
    return QStringLiteral(".TH %1 1 \"\" \"%2 %3\" \"User Commands\"\n")
               .arg(escaped(name.toUpper()), QStringLiteral("TextManagerLibrary"),
                    QStringLiteral(TEXTMANAGER_VERSION)) +
           section(QStringLiteral("NAME")) +
           QStringLiteral("%1 \\- %2\n").arg(escaped(name), escaped(summary)) +
           section(QStringLiteral("SYNOPSIS")) +
           QStringLiteral("\\fB%1\\fR %2\n").arg(escaped(name), escaped(usage)) +
           section(QStringLiteral("DESCRIPTION"));
}

/** What is true of both programs. */
QString ending()
{
    return section(QStringLiteral("EXIT STATUS")) +
           QStringLiteral("0 when all is done, 1 when the answer is no (not found, or findings), "
                          "2 for wrong usage or input that cannot be used.\n") +
           section(QStringLiteral("ENVIRONMENT")) +
           QStringLiteral(".TP\n\\fBTEXTMANAGER_BUS\\fR\n"
                          "\\fBsession\\fR or \\fBsystem\\fR: the bus of the device. By default "
                          "the session bus, or the system bus where there is none.\n") +
           section(QStringLiteral("SEE ALSO")) +
           QStringLiteral("\\fBtextmanager\\fR(1), \\fBdevice\\-simulator\\fR(1)\n");
}

} // namespace

QString manPage(const ProgramDescription& program)
{
    QString text =
        head(program.name, program.summary, QStringLiteral("COMMAND [options] ARGUMENTS")) +
        paragraphs(program.text) + section(QStringLiteral("COMMANDS"));
    for (const CommandDescription& command : program.commands)
        text += QStringLiteral(".SS \"%1\"\n").arg(escaped(usageOf(command))) +
                paragraphs(command.text) + options(command) + QStringLiteral(".PP\nExample:\n") +
                example(command);
    return text + ending();
}

QString manPage(const CommandDescription& program)
{
    return head(program.name(), program.summary, usageOf(program).section(QLatin1Char(' '), 1)) +
           paragraphs(program.text) + section(QStringLiteral("OPTIONS")) + options(program) +
           section(QStringLiteral("EXAMPLE")) + example(program) + ending();
}
