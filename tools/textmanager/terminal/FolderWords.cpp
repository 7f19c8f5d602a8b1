#include "FolderWords.h"

#include "Console.h"
#include "LanguageCatalog.h"
#include "LanguageFolder.h"

namespace
{

QStringList ask(const QString& folderPath, QStringList (*question)(const LanguageFolder& folder))
{
    if (folderPath.isEmpty() || !LanguageCatalog::findFolderFault(folderPath).isEmpty())
        return {};
    const SilencedWarnings silenced;
    return question(LanguageFolder(folderPath));
}

} // namespace

QStringList languagesOf(const QString& folderPath)
{
    return ask(folderPath,
               [](const LanguageFolder& folder) { return folder.getAvailableLanguages(); });
}

QStringList urlsOf(const QString& folderPath)
{
    return ask(folderPath, [](const LanguageFolder& folder) { return folder.collectAllUrls(); });
}
