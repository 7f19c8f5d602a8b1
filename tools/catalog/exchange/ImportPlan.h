#pragma once

#include "ExchangeTexts.h"

#include <QString>
#include <QVector>

/** What is wanted of an import beyond what is safe. */
struct ImportOptions {
    bool areStaleTaken = false;    ///< texts of an older base text, and those to be looked at again
    bool areFaultsIgnored = false; ///< errors of the checks
};

/** What an import makes of a file: a text for each unit that is taken, and why the others are not.
 */
struct ImportPlan {
    struct NewText {
        QString url;
        bool isShort = false;
        QString text;
        QString baseText;     ///< what it is of; empty when that is not known
        bool isStale = false; ///< whether the base has another text by now
        Place place;
    };

    QVector<NewText> texts;          ///< what is to be written
    QVector<NewText> confirmedTexts; ///< what is there already, was stale, and is said to be right
    int sameCount = 0;               ///< how many are there already and stay as they are
    int staleCount = 0;              ///< how many of these are stale
    QVector<ExchangeFault> leftOut;  ///< in the order of the file
};

/**
 * Compares a file with what the folder has. Nothing in it empties a text or changes a comment.
 *
 * @param file of the language and of the base of @p texts.
 */
ImportPlan planImport(const ExchangeFile& file, const ExchangeTexts& texts,
                      const ImportOptions& options);
