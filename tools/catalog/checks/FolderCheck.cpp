#include "FolderCheck.h"

#include "CheckList.h"
#include "FolderPack.h"
#include "LanguageCheck_p.h"
#include "PseudoLanguage.h"
#include "RegularFile.h"

#include "LanguageDefinitions.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <future>
#include <mutex>
#include <optional>
#include <thread>
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
    if (file == nullptr || isNothingAt(BaseTextRecord::pathIn(folder)))
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

/** A folder into which a pack was put half. */
QVector<Finding> findUnfinishedPack(const LanguageCatalog& catalog)
{
    if (catalog.files().empty())
        return {};
    const QFileInfo file(catalog.files().front().path);
    if (isNothingAt(file.dir().filePath(FolderPack::unfinishedMark())))
        return {};
    return {{QStringLiteral("unfinished-pack"),
             Finding::Class::Error,
             FolderPack::unfinishedMark(),
             {},
             {},
             {},
             QStringLiteral("The pack was interrupted, and some of its files are of an older one. "
                            "Pack it again.")}};
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

/** What the check of one file gave. */
struct FileResult {
    QVector<Finding> findings;
    std::optional<LanguageCoverage> coverage;
};

FileResult checkFile(const CheckContext& context, const CatalogFile& file)
{
    FileResult result{file.faults, std::nullopt};
    if (!isCheckable(file) || isPseudo(file))
        return result;
    LanguageCheck check(context, file);
    result.findings += check.run();
    if (!file.isShort)
        result.coverage = check.coverage();
    return result;
}

/** Checks the files that are wanted. Each is checked by one thread, which takes the next one then.
 */
std::vector<FileResult> checkFiles(const CheckContext& context, const CheckProgress& progress)
{
    const std::vector<CatalogFile>& files = context.catalog.files();
    std::vector<FileResult> results(files.size());
    std::mutex mutex;
    std::size_t next = 0;
    const auto take = [&] {
        const std::lock_guard<std::mutex> locker(mutex);
        while (next < files.size() && !context.settings.isWanted(files[next].language))
            ++next;
        if (next < files.size() && progress)
            progress();
        return next < files.size() ? next++ : next;
    };
    const auto work = [&] {
        for (std::size_t file = take(); file < files.size(); file = take())
            results[file] = checkFile(context, files[file]);
    };
    std::vector<std::future<void>> workers;
    for (unsigned worker = 1; worker < std::thread::hardware_concurrency(); ++worker)
        workers.push_back(std::async(std::launch::async, work));
    work();
    for (std::future<void>& worker : workers)
        worker.get();
    return results;
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
    result.findings = settings.faults + findUnfinishedPack(catalog) +
                      readRecord(catalog, settings.base, false, context.record) +
                      readRecord(catalog, settings.base, true, context.shortRecord);
    for (const FileResult& one : checkFiles(context, progress)) {
        result.findings += one.findings;
        if (one.coverage)
            result.languages.append(*one.coverage);
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
