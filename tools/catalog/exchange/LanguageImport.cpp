#include "LanguageImport.h"

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

/** The text in the file that is replaced; none when there is none yet. */
int nodeOf(const ImportPlan::NewText& text, const ExchangeTexts& texts)
{
    return texts.side(text.isShort).language.entry(text.url).node;
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
    const ExchangeFile usable =
        hasShort && !isShortWanted
            ? withoutShortTexts(file, QStringLiteral("name the folder of the short texts with "
                                                     "--short-folder."))
            : file;
    const auto textsOf = [](const auto& editor) {
        return editor == nullptr ? LanguageTexts() : LanguageTexts(editor->tree());
    };
    const ExchangeTexts texts =
        folder.beside(language, textsOf(import->m_pFull), textsOf(import->m_pShort));
    import->apply(planImport(usable, texts, options), texts);
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
    m_pShort = listLanguages(path).contains(m_StrLanguage)
                   ? LanguageFileEditor::open(path, m_StrLanguage, fault)
                   : LanguageFileEditor::create(path, m_StrLanguage, fault);
    return m_pShort != nullptr;
}

void LanguageImport::apply(const ImportPlan& plan, const ExchangeTexts& texts)
{
    m_SameCount = plan.sameCount;
    m_StaleCount = plan.staleCount;
    m_LeftOut = plan.leftOut;
    for (const ImportPlan::NewText& text : plan.confirmedTexts) {
        note(text);
        m_Changes.append({text.url, text.isShort, Change::Kind::Confirmed});
    }
    replaceTexts(plan, texts);
    for (const ImportPlan::NewText& text : plan.texts) {
        const bool isThere = nodeOf(text, texts) != JsonTree::none;
        const QString obstacle =
            isThere ? QString() : add(text, texts.comment(text.url, text.isShort));
        if (obstacle.isEmpty())
            note(text);
        else
            m_LeftOut.append(
                {text.place, QStringLiteral("%1: cannot be written: %2.").arg(text.url, obstacle)});
        if (isThere)
            m_Changes.append({text.url, text.isShort, Change::Kind::Changed});
    }
}

/** Replaces the texts that are there, which is to be done before others are added. */
void LanguageImport::replaceTexts(const ImportPlan& plan, const ExchangeTexts& texts)
{
    QMap<int, QString> strings;
    QMap<int, QString> shortStrings;
    for (const ImportPlan::NewText& text : plan.texts) {
        const int node = nodeOf(text, texts);
        if (node != JsonTree::none)
            (text.isShort ? shortStrings : strings).insert(node, text.text);
    }
    m_pFull->replaceStrings(strings);
    if (m_pShort != nullptr)
        m_pShort->replaceStrings(shortStrings);
}

void LanguageImport::note(const ImportPlan::NewText& text)
{
    LanguageFileEditor* editor = (text.isShort ? m_pShort : m_pFull).get();
    if (editor != nullptr && !text.baseText.isEmpty())
        editor->noteBaseText({text.url, text.baseText, text.isStale});
}

/** Adds a text that is not there. @return why that is not possible. */
QString LanguageImport::add(const ImportPlan::NewText& text, const QString& comment)
{
    QJsonObject& document = (text.isShort ? m_pShort : m_pFull)->document();
    if (document.isEmpty())
        document = emptyDocument(m_StrLanguage);
    const QStringList node = storagePathOf(text.url, document);
    const QStringList commentPath = node + QStringList(LanguageDefinitions::getJsonCommentName());
    const bool isNodeNew = valueAt(node, document).isUndefined();
    const bool hasComment = !valueAt(commentPath, document).isUndefined();
    QString obstacle = isNodeNew ? findUnusableKey(text.url) : QString();
    if (obstacle.isEmpty())
        obstacle = writeString(node + QStringList(LanguageDefinitions::getJsonTextName()),
                               text.text, document);
    // A text without a comment is listed nowhere; one that is there is left alone.
    if (obstacle.isEmpty() && !hasComment)
        obstacle = writeString(commentPath, comment, document);
    if (obstacle.isEmpty())
        m_Changes.append({text.url, text.isShort, Change::Kind::Added});
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
    return fault.isEmpty();
}
