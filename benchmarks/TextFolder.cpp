#include "TextFolder.h"

#include <LanguageDefinitions.h>

#include <QFile>
#include <QTextStream>

namespace
{

QString listOfUrls()
{
    return QStringLiteral("urls.txt");
}

} // namespace

TextFolder::TextFolder(const QString& path)
    : m_StrPath(path + QLatin1Char('/'))
{
}

bool TextFolder::isUsable() const
{
    return QFile::exists(m_StrPath + listOfUrls());
}

QString TextFolder::languages() const
{
    return m_StrPath + QStringLiteral("languages/");
}

QString TextFolder::incompleteLanguages() const
{
    return m_StrPath + QStringLiteral("incomplete/");
}

QString TextFolder::translations() const
{
    return m_StrPath + QStringLiteral("translations/");
}

QString TextFolder::peers() const
{
    return m_StrPath + QStringLiteral("peers/");
}

QVector<QString> TextFolder::urls() const
{
    return readList(listOfUrls());
}

QVector<QString> TextFolder::urlsShownInFull() const
{
    return readList(QStringLiteral("shown_in_full.txt"));
}

QString TextFolder::shortFolder()
{
    return QStringLiteral("short");
}

QString TextFolder::language()
{
    return QStringLiteral("de_DE");
}

QVector<QString> TextFolder::languageKeys()
{
    return {language(), LanguageDefinitions::getFirstFallbackLanguageFilename(),
            LanguageDefinitions::getSecondFallbackLanguageFilename()};
}

QVector<QString> TextFolder::readList(const QString& name) const
{
    QVector<QString> lines;
    QFile file(m_StrPath + name);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return lines;
    QTextStream stream(&file);
    for (QString line; stream.readLineInto(&line);)
        lines.append(line);
    return lines;
}
