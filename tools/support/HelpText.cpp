#include "HelpText.h"

#include <algorithm>

namespace
{

constexpr int widthOfTerminal = 80;

/** Breaks a paragraph into lines; those after the first begin with as many blanks. */
QString wrapped(const QString& paragraph, int indentation)
{
    QString text;
    int column = indentation;
    for (const QString& word : paragraph.split(QLatin1Char(' '))) {
        const bool isFirst = text.isEmpty();
        if (!isFirst && column + 1 + word.size() >= widthOfTerminal) {
            text += QLatin1Char('\n') + QString(indentation, QLatin1Char(' '));
            column = indentation;
        } else if (!isFirst) {
            text += QLatin1Char(' ');
            ++column;
        }
        text += word;
        column += static_cast<int>(word.size());
    }
    return text;
}

QString wrappedParagraphs(const QString& text)
{
    QString result;
    for (const QString& paragraph : text.split(QStringLiteral("\n\n")))
        result += wrapped(paragraph, 0) + QStringLiteral("\n\n");
    return result;
}

/** A table of two columns, the second one wrapped. */
QString table(const QVector<QPair<QString, QString>>& rows)
{
    constexpr int margin = 2;
    int width = 0;
    for (const auto& row : rows)
        width = std::max(width, static_cast<int>(row.first.size()));
    QString text;
    for (const auto& row : rows)
        text += QStringLiteral("  ") + row.first.leftJustified(width + margin) +
                wrapped(row.second, margin + width + margin) + QLatin1Char('\n');
    return text;
}

} // namespace

OptionDescription helpOption()
{
    return {QStringLiteral("help"), {}, QStringLiteral("Show this help."), {}, {},
            QStringLiteral("h")};
}

QString usageOf(const CommandDescription& command)
{
    QStringList words =
        QStringList{command.name(), QStringLiteral("[options]")} + command.argumentNames();
    for (const OptionDescription& option : command.options) {
        if (option.isRequired)
            words.append(QStringLiteral("--%1 %2").arg(option.name, option.valueName));
    }
    return words.join(QLatin1Char(' '));
}

QString nameOf(const OptionDescription& option)
{
    const QString shortForm = option.shortName.isEmpty()
                                  ? QString()
                                  : QLatin1Char('-') + option.shortName + QStringLiteral(", ");
    return shortForm + QStringLiteral("--") + option.name +
           (option.valueName.isEmpty() ? QString() : QLatin1Char(' ') + option.valueName);
}

QString summaryOf(const OptionDescription& option)
{
    QString text = option.summary;
    if (!option.choices.isEmpty())
        text += QStringLiteral(" It is one of %1.").arg(option.choices.join(QStringLiteral(", ")));
    if (!option.defaultValue.isEmpty())
        text += QStringLiteral(" By default %1.").arg(option.defaultValue);
    return text;
}

QString helpText(const CommandDescription& command, const QString& programName)
{
    QVector<QPair<QString, QString>> options;
    for (const OptionDescription& option : command.options)
        options.append({nameOf(option), summaryOf(option)});
    const QString program = programName.isEmpty() ? QString() : programName + QLatin1Char(' ');
    QString text = QStringLiteral("Usage: ") + program + usageOf(command) + QStringLiteral("\n\n") +
                   wrappedParagraphs(command.text) + QStringLiteral("Options:\n") + table(options) +
                   QStringLiteral("\nExample:\n");
    for (const QString& line : command.example.split(QLatin1Char('\n')))
        text += QStringLiteral("  ") + line + QLatin1Char('\n');
    text.chop(1);
    return text;
}

QString helpText(const ProgramDescription& program)
{
    QVector<QPair<QString, QString>> commands;
    for (const CommandDescription& command : program.commands)
        commands.append({command.name(), command.summary});
    return QStringLiteral("Usage: %1 COMMAND [options] ARGUMENTS\n\n").arg(program.name) +
           wrappedParagraphs(program.text) + QStringLiteral("Commands:\n") + table(commands) +
           QStringLiteral("\n'%1 help COMMAND' describes a command, '%1 --version' names the "
                          "version.")
               .arg(program.name);
}
