#include "ExchangeOptions.h"

#include "CommandLine.h"

OptionDescription asOption()
{
    return {QStringLiteral("as"),
            QStringLiteral("FORMAT"),
            QStringLiteral("The format of the file, whatever its extension."),
            {},
            ExchangeFormat::names()};
}

OptionDescription baseOption()
{
    return {QStringLiteral("base"), QStringLiteral("KEY"),
            QStringLiteral("The language that is translated; en_US when nothing else is said, nor "
                           "stands in .textmanager-check.json.")};
}

CheckSettings settingsOf(const CommandLine& commandLine, const QString& folderPath)
{
    CheckSettings settings;
    settings.readFrom(folderPath);
    if (commandLine.isSet(baseOption().name))
        settings.base = commandLine.value(baseOption().name);
    if (commandLine.isSet(shortFolderOption().name))
        settings.shortFolder = commandLine.value(shortFolderOption().name);
    return settings;
}

const ExchangeFormat* chooseFormat(const CommandLine& commandLine, const QString& path)
{
    const QString name = commandLine.value(asOption().name);
    const ExchangeFormat* format =
        name.isEmpty() ? ExchangeFormat::byExtension(path) : ExchangeFormat::byName(name);
    if (format == nullptr)
        printMessage(QStringLiteral("%1: the extension tells no format. Name it with --as: %2.")
                         .arg(path, ExchangeFormat::names().join(QStringLiteral(", "))));
    return format;
}
