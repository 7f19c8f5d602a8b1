#pragma once

#include "EditBatch.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVector>

/** The URLs that edits add to a document, some of which may be slips of the pen. */
class NewUrls
{
public:
    /** @param document as it is before the edits. */
    NewUrls(const QVector<TextEdit>& edits, const QJsonObject& document);

    /** Says of each that it is not there. @return whether there were any. */
    bool areRefused() const;

    /** Asks of each that no other language of the folder knows either, and that is near to a known
     * one, whether that was meant. Of very many, the first ones tell. */
    void askForSlips(const QString& folderPath) const;

private:
    QStringList m_KnownUrls;
    QStringList m_NewUrls;
};
