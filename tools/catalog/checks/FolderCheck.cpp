#include "FolderCheck.h"

#include "CheckList.h"
#include "LanguageCheck_p.h"
#include "PseudoLanguage.h"
#include "RegularFile.h"

#include "LanguageDefinitions.h"

#include <QFileInfo>

#include <algorithm>
#include <tuple>

namespace
{

/** The base first, so that what POSIX has counts only where the base has nothing. */
ReferenceTexts collectReferences(const LanguageCatalog& catalog, const QString& base, bool isShort)
{
    ReferenceTexts references;
    const QString posix = LanguageDefinitions::getSecondFallbackLanguageFilename();
    for (const QString& language : {base, posix}) {
        if (const CatalogFile* file = catalog.find(language, isShort))
            references.add(DocumentTexts(file->document), language == base);
    }
    references.settle();
    return references;
}

/** Reads the record of the folder in which a file of the base stands. @return why it is none. */
QVector<Finding> readRecord(const LanguageCatalog& catalog, const QString& base, bool isShort,
                            BaseTextRecord& record)
{
    const CatalogFile* file = catalog.find(base, isShort);
    const QString folder = file != nullptr ? QFileInfo(file->path).path() : QString();
    if (file == nullptr || !QFileInfo::exists(BaseTextRecord::pathIn(folder)))
        return {};
    BaseTextRecord found;
    const FileContent content = readRegularFile(BaseTextRecord::pathIn(folder));
    std::optional<Finding> fault;
    if (content.bytes)
        fault = found.read(*content.bytes);
    else
        fault = Finding{QStringLiteral("unreadable-file"),
                        Finding::Class::Error,
                        BaseTextRecord::fileName(),
                        {},
                        {},
                        {},
                        QStringLiteral("It cannot be read: %1.").arg(content.error)};
    if (fault) {
        const QString subFolder = file->file.section(QLatin1Char('/'), 0, -2);
        fault->file.prepend(subFolder.isEmpty() ? QString() : subFolder + QLatin1Char('/'));
        return {*fault};
    }
    if (found.baseLanguage() == base)
        record = found;
    return {};
}

/** Whether the language was made to be looked at: nobody is to translate it. */
bool isPseudo(const CatalogFile& file)
{
    return file.document.headerField(PseudoLanguage::headerField()) != JsonTree::none;
}

bool isBefore(const Finding& one, const Finding& other)
{
    return std::tie(one.file, one.place.line, one.place.column, one.id, one.url) <
           std::tie(other.file, other.place.line, other.place.column, other.id, other.url);
}

/** Whether the texts of a file are checked: what Qt alone understands has no places to name. */
bool isCheckable(const CatalogFile& file)
{
    return file.isLoaded && file.document.tree().isSound();
}

} // namespace

int CheckResult::countOf(Finding::Class findingClass) const
{
    return static_cast<int>(
        std::count_if(findings.begin(), findings.end(), [=](const Finding& finding) {
            return finding.findingClass == findingClass;
        }));
}

bool CheckResult::isFailed(const CheckSettings& settings) const
{
    const bool hasFinding =
        std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
            return finding.findingClass <= settings.failOn; // the heaviest come first
        });
    const bool isUnder =
        settings.failUnder &&
        std::any_of(languages.begin(), languages.end(), [&](const LanguageCoverage& coverage) {
            return coverage.share() < *settings.failUnder;
        });
    return hasFinding || isUnder;
}

CheckResult checkFolder(const LanguageCatalog& catalog, const CheckSettings& settings,
                        const CheckProgress& progress)
{
    CheckContext context{catalog, settings, {}, {}, false, {}, {}};
    const CatalogFile* base = catalog.find(settings.base);
    context.hasBase = base != nullptr && isCheckable(*base);
    if (context.hasBase) {
        context.texts = collectReferences(catalog, settings.base, false);
        context.shortTexts = collectReferences(catalog, settings.base, true);
    }
    CheckResult result;
    result.findings = settings.faults + readRecord(catalog, settings.base, false, context.record) +
                      readRecord(catalog, settings.base, true, context.shortRecord);
    int done = 0;
    for (const CatalogFile& file : catalog.files()) {
        if (settings.isWanted(file.language)) {
            result.findings += file.faults;
            if (isCheckable(file) && !isPseudo(file)) {
                LanguageCheck check(context, file);
                result.findings += check.run();
                if (!file.isShort)
                    result.languages.append(check.coverage());
            }
        }
        if (progress)
            progress(++done, static_cast<int>(catalog.files().size()));
    }
    result.findings.erase(
        std::remove_if(result.findings.begin(), result.findings.end(),
                       [&](const Finding& finding) { return settings.isIgnored(finding); }),
        result.findings.end());
    std::stable_sort(result.findings.begin(), result.findings.end(), isBefore);
    std::sort(result.languages.begin(), result.languages.end(),
              [](const auto& one, const auto& other) { return one.language < other.language; });
    return result;
}
