#pragma once

#include "EditedDocument.h"
#include "FileTransaction.h"

#include <QString>
#include <QStringList>

#include <vector>

/**
 * Moves a text, with all that is below it, to another URL in every file of a folder and of its
 * short texts: in all of them, or in none.
 *
 * A file in which it is moved already is left alone, so that what a crash left half done is mended
 * by the same again.
 */
class TextRename
{
public:
    /** What became of one file. */
    enum class State {
        Moved,
        MovedBefore, ///< only the new URL is there
        Without,     ///< neither URL is there
    };
    struct File {
        QString path;
        EditedDocument document;
        State state = State::Without;
    };

    TextRename(const QString& url, const QString& newUrl);

    /**
     * Locks the files of the folders and moves the text in the documents.
     *
     * @return why that cannot be done everywhere; empty when it is.
     */
    QString prepare(const QStringList& folderPaths);

    /** All files, in the order of the folders. */
    const std::vector<File>& files() const { return m_Files; }
    bool isInAny(State state) const;

    /** Saves what was moved. @return why not; see FileTransaction::save(). */
    QString save();

private:
    QString findUrlFault() const;
    QString move(File& file) const;

    QString m_StrUrl;
    QString m_StrNewUrl;
    FileTransaction m_Transaction;
    std::vector<File> m_Files;
};
