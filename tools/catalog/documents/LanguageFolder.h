#pragma once

#include "Finding.h"

#include "TextManagerBase.h"

#include <QString>
#include <QStringList>
#include <QVector>

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

    /** Loads a folder that is there (findFolderFault()), and its short texts. */
    explicit LanguageFolder(const QString& folderPath, const QString& shortFolder = QString());

    /** What the library answers for @p languageKey, and from which language. */
    Answer lookUp(const QString& textUrl, Wanted wanted, const QString& languageKey) const;

    /** Why lookUp() found nothing: what each language that was tried has at the URL. */
    QString explainMiss(const QString& textUrl, Wanted wanted, const QString& languageKey) const;

    /** The language whose URLs and header the library answers with for @p languageKey; empty when
     * there is none. */
    QString chooseLoadedLanguage(const QString& languageKey) const;

    /** The URLs of all languages, each once. */
    QStringList collectAllUrls() const;

    /** The folder, as a text manager wants it. */
    QString getLanguagePath() const { return m_StrLanguagePath; }
    /** The files that are left out without a word, one finding for each. Looks only at those that
     * were not loaded, or share their language's key. */
    QVector<Finding> findLeftOutFiles() const;

private:
    /** What one language of one map has at the URL, without fallback. */
    QString readOwn(const QMap<QString, QJsonObject>& languageMap, const QString& textUrl,
                    Wanted wanted, const QString& languageKey) const;
    Answer lookUpFullText(const QString& textUrl, const QString& languageKey) const;
    Answer lookUpComment(const QString& textUrl, const QString& languageKey) const;
};
