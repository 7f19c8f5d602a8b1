#pragma once

#include "Finding.h"
#include "IgnoreRule.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

/** What is checked, and what counts. */
struct CheckSettings {
    QString base;        ///< key of the language that all are held against
    QString shortFolder; ///< empty: no short texts
    int shortLength = 0; ///< what a short text may have in characters; 0: no limit
    Finding::Class failOn = Finding::Class::Error; ///< the lightest class that makes a check fail
    std::optional<double> failUnder; ///< the least share of translated texts in per cent
    QVector<IgnoreRule> ignore;
    QStringList languages;   ///< only these; empty: all
    QVector<Finding> faults; ///< what is wrong with the file of settings: each a "bad-settings"

    /** The settings when nobody says anything. */
    CheckSettings();

    /**
     * Takes over what stands in the file of settings in a folder, if there is one. What is wrong
     * there is left out.
     */
    void readFrom(const QString& folderPath);

    bool isIgnored(const Finding& finding) const;
    bool isWanted(const QString& language) const
    {
        return languages.isEmpty() || languages.contains(language);
    }

    /** ".textmanager-check.json" */
    static QString fileName();
};
