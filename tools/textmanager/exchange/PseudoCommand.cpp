#include "CommandLine.h"
#include "Commands.h"
#include "ExchangeFolder.h"
#include "ExchangeOptions.h"
#include "FileCheck.h"
#include "Folders.h"
#include "LanguageReading.h"
#include "LanguageTexts.h"
#include "PseudoLanguage.h"
#include "RegularFile.h"

#include "LanguageDefinitions.h"

#include <QDir>

#include <memory>

namespace
{

const QString outputOption = QStringLiteral("output");
const QString styleOption = QStringLiteral("style");
const QString rightToLeftOption = QStringLiteral("rtl");

QJsonObject readDocument(const QString& path)
{
    return parseLanguage(readRegularFile(path).bytes.value_or(QByteArray()));
}

/** The documents of a folder's languages by their keys. */
QMap<QString, QJsonObject> readDocuments(const QString& folderPath)
{
    QMap<QString, QJsonObject> documents;
    QString fault;
    const QFileInfoList entries = listLanguageFiles(folderPath, fault);
    for (const QFileInfo& entry : entries)
        documents.insert(entry.baseName(), readDocument(entry.filePath()));
    return documents;
}

/** Whether other languages are answered with its texts where they have none. */
bool isFallback(const QString& language)
{
    return language == LanguageDefinitions::getFirstFallbackLanguageFilename() ||
           language == LanguageDefinitions::getSecondFallbackLanguageFilename();
}

/** The file to write; null, after a message, when it cannot be, or is a person's work. */
std::unique_ptr<LanguageFileEditor> openTarget(const QString& folderPath, const QString& language)
{
    if (isFallback(language)) {
        printMessage(QStringLiteral("'%1' answers where other languages have no text, and is not "
                                    "made. Take another name with -o.")
                         .arg(language));
        return nullptr;
    }
    if (!listLanguages(folderPath).contains(language))
        return createEditor(folderPath, language);
    auto editor = openEditor(folderPath, language);
    if (editor == nullptr || PseudoLanguage::isPseudo(editor->document()))
        return editor;
    printMessage(QStringLiteral("%1: was not made by this command, and is left alone. Take another "
                                "name with -o, or remove the file.")
                     .arg(editor->filePath()));
    return nullptr;
}

/** What is made in one folder. */
struct Made {
    std::unique_ptr<LanguageFileEditor> editor;
    int texts = 0;
};

/** Makes the language in one folder, not saved yet; no editor, after a message, when it cannot. */
Made makeIn(const QString& folderPath, const QString& base, const CommandLine& commandLine)
{
    const QString language = commandLine.value(outputOption);
    const QMap<QString, QJsonObject> documents = readDocuments(folderPath);
    if (documents.value(base).isEmpty()) {
        printMessage(QStringLiteral("there is no base language '%1' in %2. Name it with --base.")
                         .arg(base, folderPath));
        return Made();
    }
    PseudoLanguage pseudo(commandLine.value(styleOption), commandLine.isSet(rightToLeftOption));
    for (const QJsonObject& document : documents) {
        if (pseudo.needsAllLanguages() && !PseudoLanguage::isPseudo(document))
            pseudo.addTexts(document);
    }
    Made made{openTarget(folderPath, language), 0};
    if (made.editor != nullptr) {
        made.editor->document() = pseudo.make(language, documents.value(base));
        made.texts = static_cast<int>(LanguageTexts(made.editor->document()).entries().size());
    }
    return made;
}

void print(const Made& made, bool isJsonWanted)
{
    const QString path = made.editor->filePath();
    if (isJsonWanted)
        printResult({{QStringLiteral("file"), path}, {QStringLiteral("texts"), made.texts}});
    else
        printResult(QStringLiteral("%1: %2").arg(path, counted(made.texts, "text")));
}

ExitStatus runPseudo(const CommandLine& commandLine)
{
    if (commandLine.value(outputOption).isEmpty())
        return commandLine.refuse(QStringLiteral("--output is missing."));
    const QString folderPath = commandLine.arguments().constFirst();
    if (!checkFolder(folderPath))
        return UnusableInput;
    const CheckSettings settings = settingsOf(commandLine, folderPath);
    QStringList folders = {folderPath};
    if (!settings.shortFolder.isEmpty())
        folders.append(QDir(folderPath).filePath(settings.shortFolder));
    std::vector<Made> all;
    for (const QString& folder : qAsConst(folders)) {
        all.push_back(makeIn(folder, settings.base, commandLine));
        if (all.back().editor == nullptr)
            return UnusableInput;
    }
    std::vector<LanguageFileEditor*> editors;
    editors.reserve(all.size());
    for (const Made& made : all)
        editors.push_back(made.editor.get());
    const QString fault = commandLine.isDryRun() ? QString() : LanguageFileEditor::saveAll(editors);
    if (!fault.isEmpty()) {
        printMessage(fault);
        return UnusableInput;
    }
    for (const Made& made : all)
        print(made, commandLine.isJsonWanted());
    return Done;
}

} // namespace

Command pseudoCommand()
{
    return {
        {QStringLiteral("pseudo DIR"),
         QStringLiteral("make a language that shows what translators cannot see"),
         QStringLiteral(
             "Makes a language from the base of the folder DIR, to be looked at on the device. "
             "With the style 'accents' each text has accents, is two fifths longer, and stands "
             "between brackets: what has no accents is not translated, and where a bracket lacks, "
             "the text is cut off. With 'urls' each text is its own URL. With 'widest' each text "
             "is the widest that any language has, where East Asian characters count twice.\n\n"
             "Its header has the field \"pseudo\", by which other commands know it. A language "
             "without that field is left alone."),
         {{outputOption,
           QStringLiteral("LANGUAGE"),
           QStringLiteral("The key of the language to make."),
           {},
           {},
           QStringLiteral("o")},
          {styleOption, QStringLiteral("STYLE"), QStringLiteral("What its texts are."),
           PseudoLanguage::styleNames().constFirst(), PseudoLanguage::styleNames()},
          {rightToLeftOption, {}, QStringLiteral("Write each text from right to left.")},
          shortFolderOption(),
          baseOption(),
          dryRunOption()},
         QStringLiteral("textmanager pseudo languages -o en_XA\n"
                        "textmanager pseudo languages -o qps --style widest --rtl")},
        runPseudo};
}
