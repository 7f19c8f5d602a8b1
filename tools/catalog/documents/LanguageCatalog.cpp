#include "LanguageCatalog.h"

#include "FileCheck.h"
#include "RegularFile.h"

#include "PropertyManagerConst.h"
#include "TextKey.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>

namespace
{

QString withSeparator(const QString& folder)
{
    return folder.isEmpty() || folder.endsWith(QLatin1Char('/')) ? folder
                                                                 : folder + QLatin1Char('/');
}

} // namespace

QString LanguageCatalog::findFolderFault(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir() && info.isReadable())
        return QString();
    const QString reason = !info.exists()  ? QStringLiteral("there is no such folder.")
                           : !info.isDir() ? QStringLiteral("it is no folder.")
                                           : QStringLiteral("it may not be read.");
    return QStringLiteral("cannot read language files in '%1': %2").arg(path, reason);
}

LanguageCatalog::LanguageCatalog(const QString& folderPath, const QString& shortFolder,
                                 const IsKnown& isKnown)
{
    addFolder(folderPath, QString(), isKnown);
    if (!shortFolder.isEmpty())
        addFolder(folderPath, shortFolder, isKnown);
}

const CatalogFile* LanguageCatalog::find(const QString& language, bool isShort) const
{
    const auto found = std::find_if(m_Files.begin(), m_Files.end(), [&](const CatalogFile& file) {
        return file.isLoaded && file.language == language && file.isShort == isShort;
    });
    return found == m_Files.end() ? nullptr : &*found;
}

QVector<Finding> LanguageCatalog::findFaults() const
{
    QVector<Finding> faults;
    for (const CatalogFile& file : m_Files)
        faults += file.faults;
    return faults;
}

QVector<Finding> LanguageCatalog::findLeftOut() const
{
    QVector<Finding> faults;
    for (const CatalogFile& file : m_Files) {
        if (!file.isLoaded)
            faults.append(file.faults.last()); // what comes before it is wrong in it, too
    }
    return faults;
}

void LanguageCatalog::addFolder(const QString& folderPath, const QString& subFolder,
                                const IsKnown& isKnown)
{
    const bool isShort = !subFolder.isEmpty();
    const QString prefix = withSeparator(subFolder);
    const QString path = withSeparator(folderPath) + subFolder;
    QString fault;
    const QFileInfoList entries = listLanguageFiles(path, fault);
    QHash<TextKey, int> filesOfLanguages;
    for (const QFileInfo& entry : entries)
        ++filesOfLanguages[entry.baseName()];
    for (const QFileInfo& entry : entries) {
        const QString language = entry.baseName();
        if (!isKnown || filesOfLanguages.value(language) > 1 || !isKnown(language, isShort))
            addFile(entry.filePath(), prefix + entry.fileName(), language, isShort);
    }
    QSet<TextKey> listedNames;
    for (const QFileInfo& entry : entries)
        listedNames.insert(entry.fileName());
    addNamesThatNobodyLoads(path, prefix, listedNames);
    if (!fault.isEmpty())
        addUnreadable(path, subFolder, isShort, fault);
}

void LanguageCatalog::addFile(const QString& path, const QString& file, const QString& language,
                              bool isShort)
{
    const FileContent content = readRegularFile(path);
    if (!content.bytes) {
        addUnreadable(
            path, file, isShort,
            QStringLiteral("%1. The file is left out; check what it is and who may read it")
                .arg(content.error));
        m_Files.back().language = language;
        m_Files.back().faults.front().language = language;
        return;
    }
    CatalogFile added{path, file, language, isShort, false, LanguageDocument(*content.bytes), {}};
    added.faults = added.document.findFaults();
    for (Finding& fault : added.faults) {
        fault.file = file;
        fault.language = language;
    }
    added.isLoaded = added.document.isLoaded();
    if (added.isLoaded)
        settleLanguage(added);
    m_Files.push_back(std::move(added));
}

/** Qt lists no names that are no UTF-8, no links that lead nowhere, and no FIFOs and devices. */
void LanguageCatalog::addNamesThatNobodyLoads(const QString& folderPath, const QString& prefix,
                                              const QSet<TextKey>& listedNames)
{
    const QString extension = PropertyManagerConst::getLanguageFileExtension();
    for (const QByteArray& name : readFolder(folderPath).names) {
        const QString shown = QString::fromUtf8(name);
        if (shown.startsWith(QLatin1Char('.')) || listedNames.contains(shown) ||
            !shown.endsWith(extension, Qt::CaseInsensitive))
            continue;
        const QString path = withSeparator(folderPath) + shown;
        const QFileInfo info(path);
        const QString reason =
            shown.toUtf8() != name
                ? QStringLiteral("its name is no UTF-8. The file is left out; rename it")
            : info.isSymLink() && !info.exists()
                ? QStringLiteral("it is a link to %1, which is not there. It is left out; mend or "
                                 "remove it")
                      .arg(info.symLinkTarget())
                : QStringLiteral("it is no regular file. It is left out; move it away");
        addUnreadable(path, prefix + shown, !prefix.isEmpty(), reason);
    }
}

void LanguageCatalog::addUnreadable(const QString& path, const QString& file, bool isShort,
                                    const QString& reason)
{
    Finding fault;
    fault.id = QStringLiteral("unreadable-file");
    fault.file = file;
    fault.reason = QStringLiteral("cannot be read: %1.").arg(reason);
    m_Files.push_back({path, file, QString(), isShort, false, LanguageDocument(), {fault}});
}

/** Of several files of one language a text manager keeps the last. */
void LanguageCatalog::settleLanguage(CatalogFile& added)
{
    for (CatalogFile& earlier : m_Files) {
        if (!earlier.isLoaded || earlier.isShort != added.isShort ||
            earlier.language != added.language)
            continue;
        earlier.isLoaded = false;
        Finding fault;
        fault.id = QStringLiteral("same-language-key");
        fault.file = earlier.file;
        fault.language = earlier.language;
        fault.reason = QStringLiteral("replaced by %1, which has the same language key '%2'. Move "
                                      "one of them away.")
                           .arg(added.file, added.language);
        earlier.faults.append(fault);
    }
}
