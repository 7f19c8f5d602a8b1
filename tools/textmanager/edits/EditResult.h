#pragma once

#include "Console.h"
#include "LanguageFileEditor.h"

#include <QJsonValue>
#include <QString>
#include <QVector>

class CommandLine;

/** What an edit did to one text. */
struct EditChange {
    QString change; ///< "added", "changed", "unchanged" or "removed"
    QString name;   ///< the text's URL, or the header's field
};

/** What became of @p name, from its value in the document before and after an edit. */
EditChange changeOf(const QString& name, const QJsonValue& before, const QJsonValue& after);

/**
 * Saves the document, unless it is a dry run, and then prints what was changed.
 *
 * @return the exit status for it; after a failure nothing is printed as done. That what was saved
 * could not be printed is a message, and no failure.
 */
ExitStatus saveAndPrint(LanguageFileEditor& editor, const QVector<EditChange>& changes,
                        const CommandLine& commandLine);
