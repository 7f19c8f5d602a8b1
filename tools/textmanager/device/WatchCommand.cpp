#include "CommandLine.h"
#include "Commands.h"
#include "DeviceMessages.h"
#include "FileChanges.h"
#include "Folders.h"
#include "TerminationSignals.h"
#include "WatchedTexts.h"
#ifdef TEXTMANAGER_HAS_REFERENCE_PLATFORM
#include "ServicePresence.h"
#endif

#include "TextManager.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSocketNotifier>
#include <QTimer>

#include <unistd.h>

namespace
{

const QLatin1String onceOption("once");

/** Without a status display the library looks for short texts in the current directory, and speaks
 * of unrelated files there; those of the language folder come with an absolute path. */
void printMessageOfFolder(QtMsgType, const QMessageLogContext&, const QString& message)
{
    if (!message.contains(QLatin1String("language file: \"./")))
        printDeviceMessage(message);
}

/** Shows the texts until the program is told to end, or nobody reads them any more. */
ExitStatus follow(TextManager& manager, const QString& languagePath, WatchedTexts& texts)
{
    bool isReloadOfFiles = false; // which says something only when texts are others
    const auto print = [&] {
        if (!(isReloadOfFiles ? texts.printIfChanged() : texts.print()))
            QCoreApplication::exit(UnusableInput);
    };
    QObject::connect(&manager, &TextManager::languageReloaded, print);
    QTimer::singleShot(0, &manager, print); // once the event loop runs, which it may have to end

    const FileChanges fileChanges(languagePath);
    QObject::connect(&fileChanges, &FileChanges::changed, &manager, [&] {
        isReloadOfFiles = true;
        manager.reloadLanguage();
        isReloadOfFiles = false;
    });
    // A pipe that nobody reads any more is an exceptional condition to the system.
    const QSocketNotifier readerNotifier(STDOUT_FILENO, QSocketNotifier::Exception);
    QObject::connect(&readerNotifier, &QSocketNotifier::activated, &manager,
                     [] { QCoreApplication::quit(); });
#ifdef TEXTMANAGER_HAS_REFERENCE_PLATFORM
    const ServicePresence servicePresence; // tells of it
#endif
    return static_cast<ExitStatus>(QCoreApplication::exec());
}

ExitStatus runWatch(const CommandLine& commandLine)
{
    const QStringList arguments = commandLine.arguments();
    auto folder = openFolder(arguments.first()); // reports what is left out
    if (!folder)
        return UnusableInput;
    const QString languagePath = QFileInfo(folder->getLanguagePath()).absoluteFilePath();
    folder.reset();
    qInstallMessageHandler(printMessageOfFolder);

    const TerminationSignals terminationSignals;
    TextManager manager(languagePath, commandLine.language());
    WatchedTexts texts(manager, arguments.mid(1), commandLine.isJsonWanted());
    if (!commandLine.isSet(onceOption))
        return follow(manager, languagePath, texts);
    return texts.print() ? Done : UnusableInput;
}

} // namespace

Command watchCommand()
{
    return {
        {QStringLiteral("watch DIR URL..."),
         QStringLiteral("print texts in the device's language whenever it changes"),
         QStringLiteral(
             "Prints the text of each URL in the language of the device's settings, behind the URL "
             "when there are several, and prints them again whenever the settings or the files "
             "change. Standard error names the language, and says when the configuration service "
             "goes or comes. What the language does not have is taken from en_US, then from POSIX. "
             "It ends when it is interrupted, or nobody reads what it prints any more."),
         {{QStringLiteral("language"), QStringLiteral("KEY"),
           QStringLiteral("The language until the settings change.")},
          {onceOption, {}, QStringLiteral("Print the texts once, and end.")}},
         QStringLiteral("textmanager watch languages Menu/Save --once")},
        runWatch};
}
