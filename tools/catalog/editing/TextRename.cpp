#include "TextRename.h"

#include "FileCheck.h"
#include "RecordUpdates.h"
#include "TextNodes.h"

#include "LanguageDefinitions.h"

#include <algorithm>

TextRename::TextRename(const QString& url, const QString& newUrl)
    : m_StrUrl(url)
    , m_StrNewUrl(newUrl)
{
}

QString TextRename::prepare(const QStringList& folderPaths)
{
    const QString urlFault = findUrlFault();
    if (!urlFault.isEmpty())
        return urlFault;
    QStringList paths;
    for (const QString& folderPath : folderPaths) {
        const QFileInfoList entries = listLanguageFiles(folderPath);
        for (const QFileInfo& entry : entries)
            paths.append(entry.filePath());
    }
    const QString lockFault = m_Transaction.lock(paths);
    if (!lockFault.isEmpty())
        return lockFault;
    for (const QString& path : qAsConst(paths)) {
        m_Files.push_back({path, EditedDocument(m_Transaction.bytesOf(path).value_or(QByteArray())),
                           State::Without});
        const QString fault = move(m_Files.back());
        if (!fault.isEmpty())
            return fault;
    }
    return QString();
}

bool TextRename::isInAny(State state) const
{
    return std::any_of(m_Files.begin(), m_Files.end(),
                       [state](const File& file) { return file.state == state; });
}

QString TextRename::save()
{
    RecordUpdates updates;
    for (const File& file : m_Files) {
        if (file.state == State::Without)
            continue;
        const QFileInfo info(file.path);
        const QString fault = updates.add(
            {info.path(), info.baseName(), file.document, {{m_StrNewUrl, m_StrUrl}}, {}});
        if (!fault.isEmpty())
            return fault;
        if (file.state == State::MovedBefore)
            continue;
        const auto bytes = file.document.bytes();
        if (!bytes)
            return QStringLiteral("%1: cannot be saved: what would be written could not be read "
                                  "again. All files are as they were.")
                .arg(file.path);
        m_Transaction.write(file.path, *bytes);
    }
    std::vector<FileTransaction*> transactions = updates.transactions();
    transactions.insert(transactions.begin(), &m_Transaction);
    return FileTransaction::saveAll(transactions);
}

QString TextRename::findUrlFault() const
{
    const QString unusableKey = findUnusableKey(m_StrNewUrl);
    if (!unusableKey.isEmpty())
        return QStringLiteral("%1: cannot be a URL: %2.").arg(m_StrNewUrl, unusableKey);
    if ((m_StrNewUrl + QLatin1Char('/')).startsWith(m_StrUrl + QLatin1Char('/')))
        return QStringLiteral("%1: cannot be moved to %2, which is the same or below it.")
            .arg(m_StrUrl, m_StrNewUrl);
    return QString();
}

/** Moves the text in one document. @return why that is not possible. */
QString TextRename::move(File& file) const
{
    const QString fault = file.document.describeFault(file.path);
    if (!fault.isEmpty())
        return fault;
    QJsonObject& document = file.document.document();
    const QStringList path = storagePathOf(m_StrUrl, document);
    const QJsonValue node = valueAt(path, document);
    const bool isTargetThere =
        !valueAt(storagePathOf(m_StrNewUrl, document), document).isUndefined();
    if (!node.isObject()) {
        file.state = isTargetThere ? State::MovedBefore : State::Without;
        return QString();
    }
    if (isTargetThere)
        return QStringLiteral("%1: %2 is there already, beside %3. Remove one of the two, or take "
                              "another URL.")
            .arg(file.path, m_StrNewUrl, m_StrUrl);
    removeMember(path, document);
    const QString obstacle =
        insertObject(storagePathOf(m_StrNewUrl, document), node.toObject(), document);
    if (!obstacle.isEmpty())
        return QStringLiteral("%1: %2 cannot be moved to %3: %4.")
            .arg(file.path, m_StrUrl, m_StrNewUrl, obstacle);
    file.state = State::Moved;
    return QString();
}
