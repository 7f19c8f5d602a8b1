#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QLockFile>
#include <QString>

#include <memory>

/**
 * Holds one language file for one edit: locks it, reads it, and puts the changed document in its
 * place, whole or not at all.
 *
 * The lock is a file beside the language file, `.NAME.lock`, and keeps other editors of this kind
 * out for as long as the object lives. One that has crashed keeps nobody out. What other programs
 * write meanwhile is noticed before it would be overwritten.
 *
 * Every failure is reported with a message.
 */
class LanguageFileEditor
{
public:
    /** Locks and reads the file of @p language in a folder. Null when that is not possible, or when
     * saving it would lose something. */
    static std::unique_ptr<LanguageFileEditor> open(const QString& folderPath,
                                                    const QString& language);

    /** Locks the place of a file that is not there yet; the document is empty. Null when that is
     * not possible, or when the language is there already. */
    static std::unique_ptr<LanguageFileEditor> create(const QString& folderPath,
                                                      const QString& language);

    /** The document as it was read, and as it is to be saved. */
    QJsonObject& document() { return m_Document; }
    const QString& filePath() const { return m_StrFilePath; }

    /**
     * Saves the document: keys in ascending order, one member a line, so that a changed text is one
     * changed line. When the document is as it was read, the file is left alone.
     *
     * @return whether the file now holds the document, and does after a power failure. If not, it
     * is as it was, unless the message says otherwise.
     */
    bool save();

private:
    explicit LanguageFileEditor(const QString& filePath);

    bool lock();
    void reportMissingLock() const;
    void reportHolder() const;
    bool read();
    bool replaceFile(const QByteArray& bytes);
    bool isFileAsRead() const;
    QByteArray storedForm() const;

    QString m_StrFilePath; ///< as it is named to the user
    QString m_StrRealPath; ///< what the path leads to, when it is a symbolic link
    QLockFile m_Lock;
    QByteArray m_Bytes; ///< the file as it was read; null when there was none
    QJsonObject m_DocumentAsRead;
    QJsonObject m_Document;
};
