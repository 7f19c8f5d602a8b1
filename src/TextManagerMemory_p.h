#pragma once

#include "AnswerMemory_p.h"
#include "LanguageFile_p.h"

#include <QHash>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

/** What a text manager remembers so as not to do it again. Its mutex guards it. */
class TextManagerMemory
{
public:
    /**
     * Reads a language file of a folder: not even opened when it is proved unchanged, parsed only
     * when no file that is remembered has the same bytes.
     *
     * @param isRemembered whether the file is remembered from now on.
     * @return its top-level object; nothing when it cannot be opened or is no JSON.
     */
    std::optional<QJsonObject> readFile(const QString& folderPath, const QString& filePath,
                                        bool isRemembered);
    /** Forgets the other files of the folder: they have vanished. */
    void keepOnlyFiles(const QString& folderPath, const QStringList& filePaths);

    AnswerMemory texts;
    AnswerMemory shortTexts;

private:
    using Files = QHash<QString, LanguageFile>;

    std::optional<QJsonObject> parseUnlessKnown(const QByteArray& bytes,
                                                const LanguageFile::Digest& digest);
    void forgetAnswers();

    QHash<QString, Files> m_Folders; ///< files by path, by the folder that they were found in
};
