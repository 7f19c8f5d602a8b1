#include "FolderWords.h"

#include "Console.h"

#include "TextManagerBase.h"

#include <QDir>

#include <memory>

namespace
{

std::unique_ptr<TextManagerBase> load(const QString& folderPath)
{
    const SilencedWarnings silenced;
    const bool isThere = !folderPath.isEmpty() && QDir(folderPath).exists();
    return isThere ? std::make_unique<TextManagerBase>(folderPath + QLatin1Char('/'), QString(),
                                                       QString())
                   : nullptr;
}

} // namespace

QStringList languagesOf(const QString& folderPath)
{
    const auto folder = load(folderPath);
    return folder ? folder->getAvailableLanguages() : QStringList();
}

QStringList urlsOf(const QString& folderPath)
{
    const auto folder = load(folderPath);
    QStringList urls;
    for (const QString& language : folder ? folder->getAvailableLanguages() : QStringList())
        urls += folder->getAvailableUrls(language);
    urls.removeDuplicates();
    return urls;
}
