#pragma once

#include <QJsonObject>
#include <QMap>
#include <QStringList>
#include <QTemporaryDir>

/** A temporary folder of language files. */
class LanguageFiles
{
public:
    /** The folder with the "/" at its end that a text manager wants. */
    QString path() const { return m_Folder.path() + QLatin1Char('/'); }
    /** The text with the folder, without that "/", in the place of "DIR". */
    QString fill(QString text) const { return text.replace("DIR", m_Folder.path()); }
    /** The words of a command line in which "DIR" stands for the folder. */
    QStringList words(const QString& line) const { return fill(line).split(' '); }
    /** Path of a file in the folder; the extension is added to @p name. */
    QString file(const QString& name) const;

    /** Writes a file, its sub-folder too; the extension is added to @p name. */
    void write(const QString& name, const QByteArray& bytes) const;
    /** Writes a file whose only text, A, is @p text. */
    void writeText(const QString& name, const QByteArray& text) const;
    /** Writes a file to the name of which nothing is added. */
    void writeFile(const QString& name, const QByteArray& bytes) const
    {
        writePath(path() + name, bytes);
    }
    /** Writes a file whose path is given whole. */
    static void writePath(const QString& path, const QByteArray& bytes);
    /** Reads a file whose path is given whole; empty when there is none. */
    static QByteArray readPath(const QString& path);
    QByteArray read(const QString& name) const { return readPath(file(name)); }
    /** The bytes of all files, hidden ones and those of sub-folders too, by their paths. */
    QMap<QString, QByteArray> readAll() const;
    void remove(const QString& name) const;

private:
    QTemporaryDir m_Folder;
};

/** Parses what a test wrote down as JSON; a mistake in it ends the test program. */
QJsonObject parseObject(const QByteArray& json);
