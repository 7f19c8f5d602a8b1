#include "LanguageFiles.h"

#include "PropertyManagerConst.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

QString LanguageFiles::file(const QString& name) const
{
    return path() + name + QLatin1Char('.') + PropertyManagerConst::getLanguageFileExtension();
}

void LanguageFiles::write(const QString& name, const QByteArray& bytes) const
{
    writePath(file(name), bytes);
}

void LanguageFiles::writeText(const QString& name, const QByteArray& text) const
{
    write(name, R"({"Content": {"A": {"text": ")" + text + R"("}}})");
}

void LanguageFiles::writePath(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray LanguageFiles::readPath(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QMap<QString, QByteArray> LanguageFiles::readAll() const
{
    QMap<QString, QByteArray> found;
    QDirIterator it(path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        found.insert(path, readPath(path));
    }
    return found;
}

void LanguageFiles::remove(const QString& name) const
{
    if (!QFile::remove(file(name)))
        qFatal("cannot remove %s", qPrintable(file(name)));
}

QJsonObject parseObject(const QByteArray& json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (!document.isObject())
        qFatal("a test's own JSON is wrong: %s", qPrintable(error.errorString()));
    return document.object();
}
