#pragma once

#include "BaseTextRecord.h"
#include "FolderCheck.h"
#include "NearestNames.h"
#include "ReferenceTexts.h"
#include "TextKey.h"

/** What all checks of one folder go by. */
struct CheckContext {
    const LanguageCatalog& catalog;
    const CheckSettings& settings;
    ReferenceTexts texts;
    ReferenceTexts shortTexts; ///< of the base's and POSIX's short texts
    bool hasBase = false;      ///< whether the base can be read
    BaseTextRecord record;     ///< what the texts are of
    BaseTextRecord shortRecord;
};

/** Checks one file of a folder against the base. */
class LanguageCheck
{
public:
    LanguageCheck(const CheckContext& context, const CatalogFile& file);

    /** All that is wrong with the texts, in no order. What the file itself lacks is not among it.
     */
    QVector<Finding> run();
    /** How much of the base the file has; of full texts, after run(). */
    LanguageCoverage coverage() const;

private:
    void checkUnreachable();
    void checkEntry(const DocumentTexts::Entry& entry);
    void checkText(const DocumentTexts::Entry& entry, const QString& text,
                   const ReferenceTexts::Entry* reference);
    void checkStaleness(const DocumentTexts::Entry& entry, const ReferenceTexts::Entry* reference);
    void checkComment(const DocumentTexts::Entry& entry);
    void checkKnown(const DocumentTexts::Entry& entry);
    void checkMissing();
    bool fitsWithoutShortText(const ReferenceTexts::Entry& reference) const;
    void checkSameTexts();
    void reportOthers(const QVector<const DocumentTexts::Entry*>& entries,
                      const DocumentTexts::Entry& usual);
    QString fullTextOf(const QString& url) const;
    ShortTextLimits limitsOf(const QString& url) const;

    void add(const QString& id, const QString& url, const Place& place, const QString& reason);

    const CheckContext& m_Context;
    const CatalogFile& m_File;
    const ReferenceTexts& m_References;
    const DocumentTexts m_Texts;
    const WritingRules m_Rules;
    const WritingRules m_BaseRules;
    const bool m_IsBase;
    const CatalogFile* const m_Full; ///< of the full texts; for a file of short texts only
    QHash<TextKey, int> m_FullTexts; ///< its nodes by their URLs
    std::vector<int> m_Own;          ///< index into the file's texts by that of the reference
    NameSuggestions m_Suggestions;   ///< for URLs that are not known
    QVector<Finding> m_Findings;
};
