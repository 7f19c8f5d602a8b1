#pragma once

#include "CheckSettings.h"
#include "Finding.h"
#include "LanguageCatalog.h"

#include <QString>
#include <QVector>

#include <functional>

/** How much of the base a language has. */
struct LanguageCoverage {
    QString language;
    int texts = 0;      ///< text nodes of the base
    int translated = 0; ///< those of them for which the language has a text that is not empty

    int missing() const { return texts - translated; }
    /** In per cent; 100 when there is nothing to translate. */
    double share() const { return texts == 0 ? 100 : 100.0 * translated / texts; }
};

/** What a check of a folder gave. */
struct CheckResult {
    QVector<Finding> findings;           ///< by file, line, column and id
    QVector<LanguageCoverage> languages; ///< those that can be read, by key

    int countOf(Finding::Class findingClass) const;
    /** Whether there is a finding of the class that counts, or too few texts are translated. */
    bool isFailed(const CheckSettings& settings) const;
};

/** Called as the check of each file begins, by one thread at a time. */
using CheckProgress = std::function<void()>;

/**
 * Checks a folder of language files against its base language.
 *
 * A file that cannot be read lacks no texts, and without a base that can be read none is missing.
 * Files are checked by as many threads as the machine has processors.
 */
CheckResult checkFolder(const LanguageCatalog& catalog, const CheckSettings& settings,
                        const CheckProgress& progress = CheckProgress());
