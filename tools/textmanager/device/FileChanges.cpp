#include "FileChanges.h"

#include <QDir>

FileChanges::FileChanges(const QString& folderPath)
    : m_StrFolderPath(folderPath)
{
    constexpr int pauseInMilliseconds = 100;
    m_Pause.setSingleShot(true);
    m_Pause.setInterval(pauseInMilliseconds);
    const auto wait = [this] { m_Pause.start(); };
    connect(&m_Watcher, &QFileSystemWatcher::directoryChanged, this, wait);
    connect(&m_Watcher, &QFileSystemWatcher::fileChanged, this, wait);
    connect(&m_Pause, &QTimer::timeout, this, [this] {
        watchAll();
        Q_EMIT changed();
    });
    watchAll();
}

void FileChanges::watchAll()
{
    // A file that was replaced is another one, which nobody watches yet.
    QStringList paths = {m_StrFolderPath};
    for (const QFileInfo& file : QDir(m_StrFolderPath).entryInfoList(QDir::Files))
        paths.append(file.filePath());
    m_Watcher.addPaths(paths);
}
