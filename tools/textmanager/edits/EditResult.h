#pragma once

#include "Console.h"
#include "LanguageFileEditor.h"

#include <QJsonValue>
#include <QString>
#include <QVector>

/** What an edit did to one text. */
struct EditChange {
    QString change; ///< "added", "changed", "unchanged" or "removed"
    QString name;   ///< the text's URL, or the header's field
};

/** What became of @p name, from its value in the document before and after an edit. */
EditChange changeOf(const QString& name, const QJsonValue& before, const QJsonValue& after);

/**
 * Saves the document and then prints what was changed.
 *
 * @return the exit status for it; after a failure nothing is printed as done.
 */
ExitStatus saveAndPrint(LanguageFileEditor& editor, const QVector<EditChange>& changes,
                        bool isJsonWanted);
