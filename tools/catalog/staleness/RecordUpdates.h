#pragma once

#include "BaseTextRecord.h"
#include "EditedDocument.h"
#include "FileTransaction.h"

#include <QMap>
#include <QString>
#include <QVector>

#include <map>
#include <vector>

/** What a text is said to be of. */
struct NotedBaseText {
    QString url;
    QString baseText;
    bool isOld = false; ///< whether the base has another text by now
};

/** What was done to one language document, as far as it says what texts are of. */
struct DocumentEdit {
    QString folderPath;
    QString language;
    const EditedDocument& document;
    QMap<QString, QString>
        oldUrls; ///< of texts that were moved with all below them, by their new ones
    QVector<NotedBaseText> baseTexts;
};

/**
 * Keeps the records of the folders in which documents are saved, so that both are saved together.
 * A record is begun when a text of the base is replaced that others may translate.
 */
class RecordUpdates
{
public:
    /** Notes one edit. @return why the record cannot be kept; empty when it can. */
    QString add(const DocumentEdit& edit);

    /**
     * What saves the records, which are locked as long as this object lives, among what saves the
     * documents. Where the base was edited the record comes first: once the old base text is gone,
     * nothing else tells that others are of it. Else it comes last: a text that is of the new base
     * text and called stale is seen, one that is of the old and called current is not.
     */
    std::vector<FileTransaction*> inOrder(std::vector<FileTransaction*> documents);

private:
    struct Folder {
        FileTransaction file;
        BaseTextRecord record;
        QString baseLanguage;
        QMap<QString, QString> oldUrls; ///< whose move is noted
        bool isFirst = false;           ///< to be saved before the documents
    };

    QString open(const DocumentEdit& edit, Folder*& folder);
    static QString note(const DocumentEdit& edit, Folder& folder);

    std::map<QString, Folder> m_Folders; ///< by their paths
};
