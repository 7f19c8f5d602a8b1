#include "LanguageImport.h"

#include "BaseTextRecordFile.h"
#include "LanguageReading.h"
#include "TextNodes.h"

#include "LanguageDefinitions.h"

#include <algorithm>

namespace
{

bool isShortUnit(const ExchangeUnit& unit)
{
    return unit.isShort && !unit.text.isEmpty();
}

QJsonObject emptyDocument(const QString& language)
{
    return {{LanguageDefinitions::getJsonHeaderName(),
             QJsonObject{{LanguageDefinitions::getJsonHeaderLanguageKey(), language},
                         {LanguageDefinitions::getJsonHeaderSubLanguageKey(), QString()}}},
            {LanguageDefinitions::getJsonContentName(), QJsonObject()}};
}

/** The file without its short texts, which are left out for @p reason. */
ExchangeFile withoutShortTexts(ExchangeFile file, const QString& reason)
{
    for (const ExchangeUnit& unit : qAsConst(file.units)) {
        if (isShortUnit(unit))
            file.unusable.append(
                {unit.place, QStringLiteral("short text of %1: %2").arg(unit.url, reason)});
    }
    file.units.erase(std::remove_if(file.units.begin(), file.units.end(), isShortUnit),
                     file.units.end());
    return file;
}

} // namespace

std::unique_ptr<LanguageImport> LanguageImport::open(const ExchangeFolder& folder,
                                                     const QString& language,
                                                     const ExchangeFile& file,
                                                     const ImportOptions& options, QString& fault)
{
    std::unique_ptr<LanguageImport> import(new LanguageImport(folder, language));
    const bool hasShort = std::any_of(file.units.begin(), file.units.end(), isShortUnit);
    const bool isShortWanted = hasShort && folder.hasShortFolder();
    EditFault editFault;
    if (!import->openEditors(isShortWanted, editFault)) {
        fault = editFault.reason;
        return nullptr;
    }
    const std::optional<ExchangeTexts> texts = folder.read(language, fault);
    if (!texts)
        return nullptr;
    const ExchangeFile usable =
        hasShort && !isShortWanted
            ? withoutShortTexts(file, QStringLiteral("name the folder of the short texts with "
                                                     "--short-folder."))
            : file;
    import->apply(planImport(usable, *texts, options), *texts);
    return import;
}

LanguageImport::LanguageImport(const ExchangeFolder& folder, const QString& language)
    : m_Folder(folder)
    , m_StrLanguage(language)
{
}

bool LanguageImport::openEditors(bool isShortWanted, EditFault& fault)
{
    m_pFull = LanguageFileEditor::open(m_Folder.path(), m_StrLanguage, fault);
    if (m_pFull == nullptr || !isShortWanted)
        return m_pFull != nullptr;
    const QString path = m_Folder.shortFolderPath();
    if (listLanguages(path).contains(m_StrLanguage)) {
        m_pShort = LanguageFileEditor::open(path, m_StrLanguage, fault);
    } else {
        m_pShort = LanguageFileEditor::create(path, m_StrLanguage, fault);
        if (m_pShort != nullptr)
            m_pShort->document() = emptyDocument(m_StrLanguage);
    }
    return m_pShort != nullptr;
}

void LanguageImport::apply(const ImportPlan& plan, const ExchangeTexts& texts)
{
    m_SameCount = plan.sameCount;
    m_LeftOut = plan.leftOut;
    m_Current = plan.confirmedTexts;
    for (const ImportPlan::NewText& text : plan.texts) {
        const QString obstacle = write(text, texts.comment(text.url, text.isShort));
        if (obstacle.isEmpty()) {
            m_Current.append(text);
            continue;
        }
        m_LeftOut.append(
            {text.place, QStringLiteral("%1: cannot be written: %2.").arg(text.url, obstacle)});
    }
}

QString LanguageImport::write(const ImportPlan::NewText& text, const QString& comment)
{
    QJsonObject& document = (text.isShort ? m_pShort : m_pFull)->document();
    const QStringList node = storagePathOf(text.url, document);
    const bool isAdded = valueAt(node, document).isUndefined();
    QString obstacle = isAdded ? findUnusableKey(text.url) : QString();
    if (obstacle.isEmpty())
        obstacle = writeString(node + QStringList(LanguageDefinitions::getJsonTextName()),
                               text.text, document);
    // A text without a comment is listed nowhere; one that is there is left alone.
    if (obstacle.isEmpty() && isAdded)
        obstacle = writeString(node + QStringList(LanguageDefinitions::getJsonCommentName()),
                               comment, document);
    if (obstacle.isEmpty())
        m_Changes.append({text.url, text.isShort, isAdded});
    return obstacle;
}

bool LanguageImport::save(const std::vector<std::unique_ptr<LanguageImport>>& imports,
                          QString& fault)
{
    std::vector<LanguageFileEditor*> editors;
    for (const auto& import : imports) {
        editors.push_back(import->m_pFull.get());
        if (import->m_pShort != nullptr)
            editors.push_back(import->m_pShort.get());
    }
    fault = LanguageFileEditor::saveAll(editors);
    if (!fault.isEmpty())
        return false;
    if (imports.empty())
        return true;
    const ExchangeFolder& folder = imports.front()->m_Folder;
    for (const bool isShort : {false, true}) {
        if (isShort && !folder.hasShortFolder())
            continue;
        BaseTextRecordFile file(isShort ? folder.shortFolderPath() : folder.path());
        for (const auto& import : imports) {
            for (const ImportPlan::NewText& text : qAsConst(import->m_Current)) {
                if (text.isShort == isShort && !text.baseText.isEmpty())
                    file.record().noteText(text.url, import->m_StrLanguage, text.baseText);
            }
        }
        if (!file.save()) {
            fault = file.fault();
            return false;
        }
    }
    return true;
}
