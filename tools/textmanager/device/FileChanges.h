#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

/** Tells when files of a folder were written, replaced, added or removed. */
class FileChanges : public QObject
{
    Q_OBJECT

public:
    explicit FileChanges(const QString& folderPath);

Q_SIGNALS:
    /** Once for what happens at a time, such as the steps in which a file is replaced. */
    void changed();

private:
    void watchAll();

    const QString m_StrFolderPath;
    QFileSystemWatcher m_Watcher;
    QTimer m_Pause;
};
