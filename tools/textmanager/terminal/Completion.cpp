#include "Completion.h"

#include "Commands.h"
#include "FolderWords.h"

#include <QDir>

#include <algorithm>

namespace
{

QString candidate(const QString& word, const QString& summary = QString())
{
    return summary.isEmpty() ? word : word + QLatin1Char('\t') + summary;
}

QStringList commandCandidates()
{
    QStringList candidates = {
        candidate(QStringLiteral("help"), QStringLiteral("describe a command"))};
    for (const Command& command : commands())
        candidates.append(candidate(command.description.name(), command.description.summary));
    return candidates;
}

QStringList optionCandidates(const CommandDescription& command)
{
    QStringList candidates;
    for (const OptionDescription& option : command.options)
        candidates.append(candidate(QStringLiteral("--") + option.name, option.summary));
    return candidates;
}

/** What the name of an argument, or of an option's value, stands for. */
QStringList candidatesFor(QString valueName, QString folderPath)
{
    if (folderPath.startsWith(QLatin1String("~/"))) // as typed: the shell has not replaced it yet
        folderPath.replace(0, 1, QDir::homePath());
    valueName.remove(QLatin1Char('[')).remove(QLatin1Char(']')).remove(QLatin1String("..."));
    if (valueName == QLatin1String("DIR"))
        return {QStringLiteral(":folders")};
    if (valueName == QLatin1String("FILE"))
        return {QStringLiteral(":files")};
    if (valueName == QLatin1String("KEY") || valueName == QLatin1String("LANGUAGE"))
        return languagesOf(folderPath);
    if (valueName.endsWith(QLatin1String("URL")))
        return urlsOf(folderPath);
    return {};
}

const OptionDescription* findOption(const CommandDescription& command, const QString& word)
{
    const auto option = std::find_if(
        command.options.cbegin(), command.options.cend(), [&](const OptionDescription& one) {
            return word == QLatin1String("--") + one.name ||
                   (!one.shortName.isEmpty() && word == QLatin1Char('-') + one.shortName);
        });
    return option == command.options.cend() ? nullptr : &*option;
}

/** @param words what stands between the command and the word that is wanted. */
QStringList candidatesBehind(const CommandDescription& command, const QStringList& words,
                             bool isOptionWanted)
{
    QStringList arguments;
    const OptionDescription* openOption = nullptr; // whose value is still to come
    for (const QString& word : words) {
        const bool isValue = openOption != nullptr;
        openOption = isValue ? nullptr : findOption(command, word);
        if (openOption != nullptr && openOption->valueName.isEmpty())
            openOption = nullptr;
        if (!isValue && !word.startsWith(QLatin1Char('-')))
            arguments.append(word);
    }
    if (openOption != nullptr && !openOption->choices.isEmpty())
        return openOption->choices;
    if (openOption != nullptr)
        return candidatesFor(openOption->valueName, arguments.value(0));
    if (isOptionWanted)
        return optionCandidates(command);
    const QStringList names = command.argumentNames();
    const auto last = names.size() - 1;
    if (arguments.size() > last && (last < 0 || !names.at(last).endsWith(QLatin1String("..."))))
        return {};
    return candidatesFor(names.at(std::min(arguments.size(), last)), arguments.value(0));
}

} // namespace

QString completionsOf(const QStringList& words)
{
    QStringList before = words;
    QString current = before.isEmpty() ? QString() : before.takeLast();
    QString prefix; // of the word that is offered, where it holds an option, too
    if (current.startsWith(QLatin1String("--")) && current.contains(QLatin1Char('='))) {
        prefix = current.section(QLatin1Char('='), 0, 0);
        before.append(prefix);
        prefix += QLatin1Char('=');
        current.remove(0, prefix.size());
    }
    QStringList candidates;
    if (before.isEmpty() || (before.size() == 1 && before.first() == QLatin1String("help")))
        candidates = commandCandidates();
    for (const Command& command : commands()) {
        if (!before.isEmpty() && command.description.name() == before.first())
            candidates = candidatesBehind(command.description, before.mid(1),
                                          current.startsWith(QLatin1Char('-')));
    }
    QStringList lines;
    for (const QString& one : qAsConst(candidates)) {
        const bool isDirective = one.startsWith(QLatin1Char(':'));
        if (isDirective || one.startsWith(current))
            lines.append(isDirective ? one : prefix + one);
    }
    return lines.join(QLatin1Char('\n'));
}
