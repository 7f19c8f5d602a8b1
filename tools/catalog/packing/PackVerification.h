#pragma once

#include "FolderPack.h"

#include <QString>
#include <QStringList>

#include <memory>

/**
 * Compares what a packed folder answers with what the folder itself does, each through a text
 * manager: texts, short texts, headers, and the comments and listed URLs that were to be kept.
 */
class PackVerification
{
public:
    /** @param packedPath the packed form of the folder of @p request. */
    PackVerification(const PackRequest& request, const QStringList& languages,
                     const QString& packedPath);
    ~PackVerification();

    /** The first look-up in a language that is answered otherwise, as a sentence; empty when none
     * is. */
    QString findDifference(const QString& language) const;

    /** How many texts the language has of others only that were not packed. */
    int countLostTexts(const QString& language) const;

private:
    class Folder;
    QString compareLists(const QString& language) const;

    const PackRequest m_Request;
    std::unique_ptr<Folder> m_Whole;    ///< with all languages
    std::unique_ptr<Folder> m_Expected; ///< with those that were packed
    std::unique_ptr<Folder> m_Packed;
    QStringList m_Urls; ///< of all texts in the languages that were packed
};
