#pragma once

#include "FileCheck.h"

#include "TextManagerBase.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

/**
 * A text manager over one folder that also tells what the library keeps to itself: which files were
 * left out, and which language gave an answer.
 */
class LanguageFolder : public TextManagerBase
{
public:
    enum class Wanted { Text, ShortText, Comment };

    struct Answer {
        QString text;
        QString language; ///< key of the language that gave the text; empty without one
        bool isShortText =
            false; ///< whether it is a short text, and not the full text in its place
        bool isFound() const { return !text.isEmpty(); }
    };

    /**
     * Loads the folder and reports the files that were left out.
     *
     * @return null, after a message, when there is no such folder or no such short-text folder.
     */
    static std::unique_ptr<LanguageFolder> open(const QString& folderPath,
                                                const QString& shortFolder = QString());

    /** Whether there is a folder to read at @p path; a message says what is there if not. */
    static bool checkFolder(const QString& path);

    /** What the library answers for @p languageKey, and from which language. */
    Answer lookUp(const QString& textUrl, Wanted wanted, const QString& languageKey) const;

    /** Why lookUp() found nothing: what each language that was tried has at the URL. */
    QString explainMiss(const QString& textUrl, Wanted wanted, const QString& languageKey) const;

    /** The language whose URLs and header the library answers with for @p languageKey, after a
     * message when it is another one; empty, after a message, when there is none. */
    QString chooseLoadedLanguage(const QString& languageKey) const;

    /** The URLs of all languages, each once. */
    QStringList collectAllUrls() const;

    /** The folder, as a text manager wants it. */
    QString getLanguagePath() const { return m_StrLanguagePath; }
    const QVector<FileFinding>& getLeftOutFiles() const { return m_LeftOutFiles; }

private:
    LanguageFolder(const QString& languagePath, const QString& shortFolder);

    /** What one language of one map has at the URL, without fallback. */
    QString readOwn(const QMap<QString, QJsonObject>& languageMap, const QString& textUrl,
                    Wanted wanted, const QString& languageKey, bool& ok) const;

    QVector<FileFinding> m_LeftOutFiles;
};
