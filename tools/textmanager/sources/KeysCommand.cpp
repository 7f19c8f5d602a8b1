#include "CommandLine.h"
#include "Commands.h"
#include "ExchangeOptions.h"
#include "Folders.h"
#include "GeneratedKeys.h"
#include "KeyTexts.h"
#include "LanguageFolder.h"
#include "RegularFile.h"

#include "LanguageDefinitions.h"

#include <QJsonArray>
#include <QSaveFile>

#include <algorithm>

namespace
{

const QString headerOption = QStringLiteral("header");
const QString qmlOption = QStringLiteral("qml");
const QString namespaceOption = QStringLiteral("namespace");

/** A file that is made. */
struct MadeFile {
    QString path;
    QByteArray bytes;
    bool isWritten = false; ///< else it held these bytes before
};

/** Whether the languages that keys come from were read whole; a message named what was not. */
bool areSound(const QVector<Finding>& leftOut, const QString& baseLanguage)
{
    return std::none_of(leftOut.begin(), leftOut.end(), [&](const Finding& finding) {
        return finding.language == baseLanguage ||
               finding.language == LanguageDefinitions::getSecondFallbackLanguageFilename();
    });
}

/** Writes a file unless it holds the bytes already, so that nothing is built again for it.
 * @return whether it holds them now; a message says why not. */
bool writeIfChanged(MadeFile& file, bool isDryRun)
{
    const FileContent present = readRegularFile(file.path);
    file.isWritten = present.bytes != file.bytes;
    if (!file.isWritten || isDryRun)
        return true;
    QSaveFile output(file.path);
    if (output.open(QIODevice::WriteOnly) && output.write(file.bytes) == file.bytes.size() &&
        output.commit())
        return true;
    printMessage(QStringLiteral("%1: cannot be written: %2.").arg(file.path, output.errorString()));
    return false;
}

void print(const QVector<MadeFile>& files, QString::size_type keyCount, bool isJsonWanted)
{
    QJsonArray list;
    for (const MadeFile& file : files) {
        const QString change =
            file.isWritten ? QStringLiteral("written") : QStringLiteral("unchanged");
        if (!isJsonWanted)
            printResult(QStringLiteral("%1 %2").arg(change, file.path));
        list.append(
            QJsonObject{{QStringLiteral("change"), change}, {QStringLiteral("file"), file.path}});
    }
    if (isJsonWanted)
        printResult({{QStringLiteral("keys"), keyCount}, {QStringLiteral("files"), list}});
}

QVector<MadeFile> makeFiles(const CommandLine& commandLine, const QVector<KeyText>& texts)
{
    QVector<MadeFile> files;
    if (commandLine.isSet(headerOption))
        files.append({commandLine.value(headerOption),
                      generateKeyHeader(texts, commandLine.value(namespaceOption))});
    if (commandLine.isSet(qmlOption))
        files.append({commandLine.value(qmlOption), generateKeySingleton(texts)});
    return files;
}

ExitStatus runKeys(const CommandLine& commandLine)
{
    if (!commandLine.isSet(headerOption) && !commandLine.isSet(qmlOption))
        return commandLine.refuse(QStringLiteral("--header or --qml is missing."));
    if (!isNamespaceName(commandLine.value(namespaceOption)))
        return commandLine.refuse(QStringLiteral("--namespace '%1' is no name of a namespace.")
                                      .arg(commandLine.value(namespaceOption)));
    const QString folderPath = commandLine.arguments().constFirst();
    QVector<Finding> leftOut;
    const auto folder = openFolder(folderPath, QString(), &leftOut);
    if (!folder)
        return UnusableInput;
    const QString base = settingsOf(commandLine, folderPath).base;
    if (!areSound(leftOut, base) || !folder->getAvailableLanguages().contains(base)) {
        printMessage(QStringLiteral("the base language '%1', or POSIX, cannot be read. Nothing was "
                                    "written.")
                         .arg(base));
        return UnusableInput;
    }
    const QVector<KeyText> texts = keyTextsOf(*folder, base);
    QVector<MadeFile> files = makeFiles(commandLine, texts);
    for (MadeFile& file : files) {
        if (!writeIfChanged(file, commandLine.isDryRun()))
            return UnusableInput;
    }
    print(files, texts.size(), commandLine.isJsonWanted());
    return Done;
}

} // namespace

Command keysCommand()
{
    return {
        {QStringLiteral("keys DIR"),
         QStringLiteral("make constants of the text URLs, for C++ and QML"),
         QStringLiteral(
             "Makes a source in which each text URL of the base language and of POSIX is a "
             "constant, so that a misspelt one is an error and an editor completes it: "
             "TextKeys::Menu::Save in C++, TextKeys.menu.save in QML. A text that has others below "
             "it is called self: TextKeys::Menu::self. What a name cannot hold becomes \"_\".\n\n"
             "The same texts give the same bytes, and a file that holds them already is left "
             "alone. In CMake, textmanager_add_keys(target DIR) runs this in the build."),
         {{headerOption, QStringLiteral("FILE"), QStringLiteral("Make this C++ header.")},
          {qmlOption, QStringLiteral("FILE"),
           QStringLiteral("Make this QML singleton; its name is that of the type.")},
          {namespaceOption, QStringLiteral("NAME"),
           QStringLiteral("The namespace around all in the header."), QStringLiteral("TextKeys")},
          baseOption(),
          dryRunOption()},
         QStringLiteral("textmanager keys languages --header TextKeys.h --qml TextKeys.qml")},
        runKeys};
}
