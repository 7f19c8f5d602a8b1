#pragma once

#include "EditedDocument.h"
#include "FileTransaction.h"
#include "RecordUpdates.h"

#include <QJsonObject>
#include <QMap>
#include <QString>
#include <QVector>

#include <memory>
#include <vector>

/** Why a language file cannot be edited. */
struct EditFault {
    QString reason;                 ///< what is wrong and what to do about it, as a sentence
    bool isLanguageMissing = false; ///< whether there is no file of the language
};

/**
 * Holds one language file for one edit: locks it, reads it, and puts the changed document in its
 * place, whole or not at all, as FileTransaction does.
 */
class LanguageFileEditor
{
public:
    /** Locks and reads the file of @p language in a folder. Null, with @p fault, when that is not
     * possible, or when saving it would lose something. */
    static std::unique_ptr<LanguageFileEditor> open(const QString& folderPath,
                                                    const QString& language, EditFault& fault);

    /** Locks the place of a file that is not there yet; the document is empty. Null, with @p fault,
     * when that is not possible, or when the language is there already. */
    static std::unique_ptr<LanguageFileEditor> create(const QString& folderPath,
                                                      const QString& language, EditFault& fault);

    /** The document as it was read, and as it is to be saved. */
    QJsonObject& document() { return m_Document.document(); }
    /** What stands in the file, and what replaces strings of it; see EditedDocument. */
    const JsonTree& tree() const { return m_Document.tree(); }
    void replaceStrings(const QMap<int, QString>& strings) { m_Document.replaceStrings(strings); }
    const QString& filePath() const { return m_StrFilePath; }

    /** Says what a text, changed or not, is of, for the record of that, which is kept with every
     * change: see RecordUpdates. */
    void noteBaseText(const NotedBaseText& text) { m_BaseTexts.append(text); }

    /**
     * Saves the document, and the record of what texts are of where there is one: only the bytes of
     * what was changed are replaced, and what is new follows the layout around it. When the
     * document is as it was read, the file is left alone.
     *
     * @return why the file does not hold the document, or may not after a power failure; empty when
     * it does. If not, it is as it was, unless the message says otherwise.
     */
    QString save();
    /** Saves several documents, all of them or none. */
    static QString saveAll(const std::vector<LanguageFileEditor*>& editors);

private:
    explicit LanguageFileEditor(const QString& filePath);
    DocumentEdit edit() const;

    QString m_StrFilePath; ///< as it is named to the user
    FileTransaction m_Files;
    EditedDocument m_Document;
    QVector<NotedBaseText> m_BaseTexts;
};
