#include "FolderUsage.h"

#include "GeneratedKeys.h"
#include "KeyTexts.h"
#include "LanguageFolder.h"
#include "RegularFile.h"

#include "ConfigurationAndProcessDataDefinitions.h"
#include "SystemInformationManagerDataDefinitions.h"
#include "SystemInformationManagerRegistryDefinitions.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <optional>

namespace
{

std::optional<SourceLanguage> languageOf(const QFileInfo& file)
{
    static const QHash<QString, SourceLanguage> languages = [] {
        QHash<QString, SourceLanguage> byExtension;
        for (const char* extension : {"c++", "cc", "cpp", "cxx", "h", "hh", "hpp", "hxx", "ipp"})
            byExtension.insert(QLatin1String(extension), SourceLanguage::Cpp);
        for (const char* extension : {"qml", "js", "mjs"})
            byExtension.insert(QLatin1String(extension), SourceLanguage::Qml);
        byExtension.insert(QStringLiteral("json"), SourceLanguage::Json);
        return byExtension;
    }();
    const auto language = languages.constFind(file.suffix().toLower());
    return language == languages.constEnd() ? std::nullopt : std::optional(*language);
}

QVector<SourceFile> sourcesBelow(const QString& folderPath)
{
    QStringList paths;
    QDirIterator files(folderPath, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        paths.append(files.next());
    paths.sort();
    QVector<SourceFile> sources;
    for (const QString& path : qAsConst(paths)) {
        if (const auto language = languageOf(QFileInfo(path)))
            sources.append({path, *language});
    }
    return sources;
}

QStringList textIdKeysOfDataTypes()
{
    return {SystemInformationManagerRegistryDefinitions::getKeyLabelTextId(),
            ConfigurationAndProcessDataDefinitions::getKeyDataPropertyLabelTextId(),
            SystemInformationManagerDataDefinitions::getKeyLabelTextId(),
            SystemInformationManagerDataDefinitions::getKeyValueTextId()};
}

} // namespace

SourceList listSources(const QStringList& paths)
{
    SourceList list;
    for (const QString& path : paths) {
        const QFileInfo info(path);
        const auto language = languageOf(info);
        if (info.isDir())
            list.files += sourcesBelow(path);
        else if (!info.exists())
            list.faults.append(QStringLiteral("%1: there is no such file or folder.").arg(path));
        else if (!language)
            list.faults.append(
                QStringLiteral("%1: is no C++, QML, JavaScript or JSON by its name.").arg(path));
        else
            list.files.append({path, *language});
    }
    return list;
}

FolderUsage::FolderUsage(const LanguageFolder& folder, const QString& baseLanguage,
                         const QStringList& textIdKeys)
    : m_Folder(folder)
    , m_Languages(folder.getAvailableLanguages())
{
    const QVector<KeyText> texts = keyTextsOf(folder, baseLanguage);
    m_Names.cppConstants = keyHeaderNames(texts);
    m_Names.qmlProperties = keySingletonNames(texts);
    m_Names.textIdKeys = textIdKeysOfDataTypes() + textIdKeys;
    m_Names.languages = m_Languages;
}

QString FolderUsage::add(const SourceFile& source)
{
    const FileContent content = readRegularFile(source.path);
    if (!content.bytes)
        return QStringLiteral("%1: cannot be read: %2.").arg(source.path, content.error);
    const SourceUses found =
        findTextUses(QString::fromUtf8(*content.bytes), source.language, m_Names);
    m_Named += found.literals;
    for (const TextUse& use : found.uses)
        addUse(source.path, use);
    return QString();
}

void FolderUsage::addUse(const QString& path, const TextUse& use)
{
    if (use.kind != TextUse::Kind::Whole) {
        m_AtRunTime.append({path, use});
        if (!use.url.isEmpty())
            m_Beginnings.append(use.url);
        return;
    }
    m_Named.insert(use.url);
    if (!isKnown(use.url))
        m_Unknown.append({path, use});
}

bool FolderUsage::isKnown(const QString& url) const
{
    return std::any_of(m_Languages.begin(), m_Languages.end(), [&](const QString& language) {
        return !m_Folder.getAnsweringLanguage(url, language).isEmpty();
    });
}

QStringList FolderUsage::findUnused() const
{
    QStringList unused = m_Folder.collectAllUrls();
    const auto isUsed = [this](const QString& url) {
        return m_Named.contains(url) ||
               std::any_of(m_Beginnings.begin(), m_Beginnings.end(),
                           [&](const QString& beginning) { return url.startsWith(beginning); });
    };
    unused.erase(std::remove_if(unused.begin(), unused.end(), isUsed), unused.end());
    unused.sort();
    return unused;
}
