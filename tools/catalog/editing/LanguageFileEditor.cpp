#include "LanguageFileEditor.h"

#include "FileCheck.h"
#include "LanguageCatalog.h"

#include "PropertyManagerConst.h"

#include <QDir>
#include <QFileInfo>

namespace
{

/** Why no language can be edited under the key; empty when one can. */
QString findKeyFault(const QString& language)
{
    // The key is what precedes the first dot of a file name.
    if (!language.isEmpty() && !language.contains(QLatin1Char('/')) &&
        !language.contains(QLatin1Char('.')))
        return QString();
    return QStringLiteral("'%1' is no language key: give the name of the language file without "
                          "folder and extension, as in de_DE.")
        .arg(language);
}

/** The files whose texts a text manager would load under the key @p language. */
QStringList filesOfLanguage(const QString& folderPath, const QString& language, QString& fault)
{
    QStringList paths;
    const QFileInfoList entries = listLanguageFiles(folderPath, fault);
    for (const QFileInfo& entry : entries) {
        if (entry.isFile() && entry.baseName() == language)
            paths.append(entry.filePath());
    }
    return paths;
}

QString newFilePath(const QString& folderPath, const QString& language)
{
    return QDir(folderPath)
        .filePath(language + QLatin1Char('.') + PropertyManagerConst::getLanguageFileExtension());
}

/** Whether there is a folder and the key of a language; @p fault says why not. */
bool isPlace(const QString& folderPath, const QString& language, EditFault& fault)
{
    fault.reason = LanguageCatalog::findFolderFault(folderPath);
    if (fault.reason.isEmpty())
        fault.reason = findKeyFault(language);
    return fault.reason.isEmpty();
}

/** The one file of @p language; empty, with @p fault, when there is none or several. */
QString findFile(const QString& folderPath, const QString& language, EditFault& fault)
{
    const QStringList paths = filesOfLanguage(folderPath, language, fault.reason);
    if (!fault.reason.isEmpty())
        return QString();
    if (paths.size() == 1)
        return paths.first();
    // What is there all the same, and no file, is named when it is opened.
    const QFileInfo place(newFilePath(folderPath, language));
    if (paths.isEmpty() && (place.exists() || place.isSymLink()))
        return place.filePath();
    fault.isLanguageMissing = paths.isEmpty();
    fault.reason =
        paths.isEmpty()
            ? QStringLiteral("there is no language '%1': no file %2.")
                  .arg(language, place.filePath())
            : QStringLiteral("there are %1 files of language '%2': %3. Move all but one of them "
                             "away.")
                  .arg(QString::number(paths.size()), language, paths.join(QLatin1String(", ")));
    return QString();
}

} // namespace

std::unique_ptr<LanguageFileEditor>
LanguageFileEditor::open(const QString& folderPath, const QString& language, EditFault& fault)
{
    if (!isPlace(folderPath, language, fault))
        return nullptr;
    const QString filePath = findFile(folderPath, language, fault);
    if (filePath.isEmpty())
        return nullptr;
    std::unique_ptr<LanguageFileEditor> editor(new LanguageFileEditor(filePath));
    fault.reason = editor->m_Files.lock({filePath});
    if (!fault.reason.isEmpty())
        return nullptr;
    editor->m_Document = EditedDocument(editor->m_Files.bytesOf(filePath).value_or(QByteArray()));
    fault.reason = editor->m_Document.describeFault(filePath);
    return fault.reason.isEmpty() ? std::move(editor) : nullptr;
}

std::unique_ptr<LanguageFileEditor>
LanguageFileEditor::create(const QString& folderPath, const QString& language, EditFault& fault)
{
    if (!isPlace(folderPath, language, fault))
        return nullptr;
    const QString filePath = newFilePath(folderPath, language);
    std::unique_ptr<LanguageFileEditor> editor(new LanguageFileEditor(filePath));
    fault.reason = editor->m_Files.lock({filePath});
    const QStringList paths = filesOfLanguage(folderPath, language, fault.reason);
    if (fault.reason.isEmpty() && (!paths.isEmpty() || editor->m_Files.bytesOf(filePath)))
        fault.reason = QStringLiteral("the language '%1' is there already: %2.")
                           .arg(language, paths.isEmpty() ? filePath : paths.first());
    return fault.reason.isEmpty() ? std::move(editor) : nullptr;
}

LanguageFileEditor::LanguageFileEditor(const QString& filePath)
    : m_StrFilePath(filePath)
{
}

DocumentEdit LanguageFileEditor::edit() const
{
    const QFileInfo file(m_StrFilePath);
    return {file.path(), file.baseName(), m_Document, {}, m_BaseTexts};
}

QString LanguageFileEditor::save()
{
    return saveAll({this});
}

QString LanguageFileEditor::saveAll(const std::vector<LanguageFileEditor*>& editors)
{
    RecordUpdates updates;
    std::vector<FileTransaction*> transactions;
    for (LanguageFileEditor* editor : editors) {
        const std::optional<QByteArray> bytes = editor->m_Document.bytes();
        if (!bytes)
            return QStringLiteral("%1: cannot be saved: what would be written could not be read "
                                  "again. The file is as it was.")
                .arg(editor->m_StrFilePath);
        if (editor->m_Document.isTouched())
            editor->m_Files.write(editor->m_StrFilePath, *bytes);
        transactions.push_back(&editor->m_Files);
        const QString fault = updates.add(editor->edit());
        if (!fault.isEmpty())
            return fault;
    }
    return FileTransaction::saveAll(updates.inOrder(transactions));
}
