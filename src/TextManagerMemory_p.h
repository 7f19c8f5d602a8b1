#pragma once

#include "AnswerMemory_p.h"
#include "FileStamp_p.h"
#include "LanguageFile_p.h"

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QVector>

#include <optional>

/** What a text manager remembers so as not to do it again. Its mutex guards it. */
class TextManagerMemory
{
public:
    struct FileName {
        QString path;
        QString languageKey;
    };

    /**
     * The language files of a folder, in the order in which they are loaded. The folder is not
     * listed again when it is proved unchanged.
     *
     * @param isRemembered whether the folder is remembered from now on, without files that have
     * vanished.
     */
    QVector<FileName> listFiles(const QString& folderPath, bool isRemembered);
    /**
     * Reads a language file of a folder: not even opened when it is proved unchanged, parsed only
     * when no file that is remembered has the same bytes.
     *
     * @param isRemembered whether the file is remembered from now on.
     * @return its top-level object; nothing when it cannot be opened or is no JSON.
     */
    std::optional<QJsonObject> readFile(const QString& folderPath, const QString& filePath,
                                        bool isRemembered);

    AnswerMemory texts;
    AnswerMemory shortTexts;

private:
    struct Folder {
        std::optional<FileStamp> stamp; ///< unchanged with it; without it only a new list can tell
        QVector<FileName> fileNames;
        QMap<QString, LanguageFile> files; ///< by path
    };

    void remember(const QString& folderPath, const std::optional<FileStamp>& stamp,
                  const QVector<FileName>& fileNames);
    std::optional<QJsonObject> parseUnlessKnown(const QByteArray& bytes,
                                                const LanguageFile::Digest& digest);
    void forgetAnswers();

    QMap<QString, Folder> m_Folders; ///< by path
};
