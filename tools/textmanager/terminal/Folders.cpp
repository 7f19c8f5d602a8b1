#include "Folders.h"

#include "Console.h"
#include "LanguageCatalog.h"

#include <QDir>

bool checkFolder(const QString& path)
{
    const QString fault = LanguageCatalog::findFolderFault(path);
    if (!fault.isEmpty())
        printMessage(fault);
    return fault.isEmpty();
}

std::unique_ptr<LanguageFolder> openFolder(const QString& path, const QString& shortFolder,
                                           QVector<Finding>* leftOut)
{
    if (!checkFolder(path) ||
        (!shortFolder.isEmpty() && !checkFolder(QDir(path).filePath(shortFolder))))
        return nullptr;
    std::unique_ptr<LanguageFolder> folder;
    {
        // The findings name the same files, and more of them, with line and column.
        const SilencedWarnings silenced;
        folder = std::make_unique<LanguageFolder>(path, shortFolder);
    }
    const QVector<Finding> findings = folder->findLeftOutFiles();
    for (const Finding& finding : findings)
        printMessage(describeFinding(finding, folder->getLanguagePath()));
    if (leftOut != nullptr)
        *leftOut = findings;
    return folder;
}

QString describeFinding(const Finding& finding, const QString& folderPath)
{
    const QString path = QDir(folderPath).filePath(finding.file);
    if (finding.place.line == 0)
        return QStringLiteral("%1: %2").arg(path, finding.reason);
    return QStringLiteral("%1:%2:%3: %4")
        .arg(path, QString::number(finding.place.line), QString::number(finding.place.column),
             finding.reason);
}

std::unique_ptr<LanguageFileEditor> openEditor(const QString& folderPath, const QString& language)
{
    EditFault fault;
    auto editor = LanguageFileEditor::open(folderPath, language, fault);
    const QString advice =
        QStringLiteral("\n'textmanager new %1 %2' starts it.").arg(folderPath, language);
    if (!editor)
        printMessage(fault.reason + (fault.isLanguageMissing ? advice : QString()));
    return editor;
}

std::unique_ptr<LanguageFileEditor> createEditor(const QString& folderPath, const QString& language)
{
    EditFault fault;
    auto editor = LanguageFileEditor::create(folderPath, language, fault);
    if (!editor)
        printMessage(fault.reason);
    return editor;
}

bool saveEditor(LanguageFileEditor& editor)
{
    const QString fault = editor.save();
    if (!fault.isEmpty())
        printMessage(fault);
    return fault.isEmpty();
}
