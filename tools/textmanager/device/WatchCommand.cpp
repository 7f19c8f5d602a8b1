#include "CommandLine.h"
#include "Commands.h"
#include "DeviceMessages.h"
#include "LanguageFolder.h"
#include "TerminationSignals.h"

#include "TextManager.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTimer>

namespace
{

constexpr QLatin1String onceOption("once");

void printText(const TextManager& manager, const QString& url, bool isJsonWanted)
{
    const QString text = manager.getText(url, QString());
    if (text.isEmpty())
        printMessage(QStringLiteral("%1: no text.").arg(url));
    if (isJsonWanted) {
        printResult({{QStringLiteral("url"), url},
                     {QStringLiteral("found"), !text.isEmpty()},
                     {QStringLiteral("text"), text},
                     {QStringLiteral("currentLanguage"), manager.getLanguageName()}});
    } else if (!text.isEmpty()) {
        printResult(text);
    }
}

/** Prints all texts, each at once. @return whether they could be written. */
bool printTexts(const TextManager& manager, const QStringList& urls, bool isJsonWanted)
{
    if (manager.getLanguageName().isEmpty())
        printMessage(QStringLiteral("no language is known; en_US answers, then POSIX."));
    for (const QString& url : urls) {
        printText(manager, url, isJsonWanted);
        if (!flushResult())
            return false;
    }
    return true;
}

/** Without a status display the library looks for short texts in the current directory, and speaks
 * of unrelated files there; those of the language folder come with an absolute path. */
void printMessageOfFolder(QtMsgType, const QMessageLogContext&, const QString& message)
{
    if (!message.contains(QLatin1String("language file: \"./")))
        printDeviceMessage(message);
}

ExitStatus runWatch(const CommandLine& commandLine)
{
    const QStringList arguments = commandLine.arguments();
    auto folder = LanguageFolder::open(arguments.first()); // reports what is left out
    if (!folder)
        return UnusableInput;
    const QString languagePath = QFileInfo(folder->getLanguagePath()).absoluteFilePath();
    folder.reset();
    qInstallMessageHandler(printMessageOfFolder);

    const TerminationSignals terminationSignals;
    const TextManager manager(languagePath, commandLine.language());
    if (commandLine.isSet(onceOption))
        return printTexts(manager, arguments.mid(1), commandLine.isJsonWanted()) ? Done
                                                                                 : UnusableInput;
    const auto print = [&] {
        if (!printTexts(manager, arguments.mid(1), commandLine.isJsonWanted()))
            QCoreApplication::exit(UnusableInput);
    };
    QObject::connect(&manager, &TextManager::languageReloaded, print);
    QTimer::singleShot(0, &manager, print); // once the event loop runs, which it may have to end
    return static_cast<ExitStatus>(QCoreApplication::exec());
}

} // namespace

Command watchCommand()
{
    return {
        {QStringLiteral("watch DIR URL..."),
         QStringLiteral("print texts in the device's language whenever it changes"),
         QStringLiteral("Prints the text of each URL in the language of the device's settings, and "
                        "prints them again whenever the settings change, until it is interrupted. "
                        "What the language does not have is taken from en_US, then from POSIX."),
         {{QStringLiteral("language"), QStringLiteral("KEY"),
           QStringLiteral("The language until the settings change.")},
          {onceOption, {}, QStringLiteral("Print the texts once, and end.")}},
         QStringLiteral("textmanager watch languages Menu/Save --once")},
        runWatch};
}
