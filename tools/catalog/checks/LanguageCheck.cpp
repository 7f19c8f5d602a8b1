#include "LanguageCheck_p.h"

#include "CheckList.h"
#include "TextLength.h"

#include "LanguageDefinitions.h"

#include <QMap>

#include <algorithm>

LanguageCheck::LanguageCheck(const CheckContext& context, const CatalogFile& file)
    : m_Context(context)
    , m_File(file)
    , m_References(file.isShort ? context.shortTexts : context.texts)
    , m_Texts(file.document)
    , m_Rules(file.language)
    , m_BaseRules(context.settings.base)
    , m_IsBase(file.language == context.settings.base)
    , m_Full(file.isShort ? context.catalog.find(file.language) : nullptr)
    , m_Own(static_cast<std::size_t>(m_References.size()), ReferenceTexts::none)
    , m_Suggestions([this] { return m_Context.texts.urls(); })
{
    if (m_Full == nullptr)
        return;
    const DocumentTexts fullTexts(m_Full->document);
    for (const DocumentTexts::Entry& entry : fullTexts.entries())
        m_FullTexts.insert(entry.url, entry.text);
}

QVector<Finding> LanguageCheck::run()
{
    checkUnreachable();
    for (const DocumentTexts::Entry& entry : m_Texts.entries())
        checkEntry(entry);
    checkMissing();
    checkSameTexts();
    return m_Findings;
}

LanguageCoverage LanguageCheck::coverage() const
{
    LanguageCoverage coverage{m_File.language, m_References.listedCount(), 0};
    for (int index = 0; index < m_References.size(); ++index) {
        const int own = m_Own[static_cast<std::size_t>(index)];
        const bool isTranslated =
            own != ReferenceTexts::none &&
            !m_Texts.textOf(m_Texts.entries()[static_cast<std::size_t>(own)]).isEmpty();
        coverage.translated += m_References.at(index).isListed && isTranslated ? 1 : 0;
    }
    return coverage;
}

void LanguageCheck::checkUnreachable()
{
    for (const DocumentTexts::Unreachable& node : m_Texts.unreachable())
        add(QStringLiteral("unreachable-key"), node.url, m_File.document.tree().keyPlace(node.node),
            node.reason);
}

void LanguageCheck::checkEntry(const DocumentTexts::Entry& entry)
{
    const JsonTree& tree = m_File.document.tree();
    const int index = m_References.find(entry.url);
    if (index != ReferenceTexts::none)
        m_Own[static_cast<std::size_t>(index)] =
            static_cast<int>(&entry - m_Texts.entries().data());
    else
        checkKnown(entry);
    if (m_IsBase && !m_File.isShort)
        checkComment(entry);

    const QString text = m_Texts.textOf(entry);
    if (text.isEmpty()) {
        const bool isWanted = m_IsBase || (index != ReferenceTexts::none &&
                                           !m_References.at(index).analyzed.text.isEmpty());
        if (isWanted)
            add(QStringLiteral("empty-text"), entry.url, tree.valuePlace(entry.text),
                QStringLiteral("The text is empty. Translate it; until then the fallback language "
                               "is shown."));
        return;
    }
    const ReferenceTexts::Entry* reference =
        index == ReferenceTexts::none ? nullptr : &m_References.at(index);
    checkText(entry, text, reference);
    checkStaleness(entry, reference);
}

void LanguageCheck::checkText(const DocumentTexts::Entry& entry, const QString& text,
                              const ReferenceTexts::Entry* reference)
{
    const bool isCompared = reference != nullptr && !reference->analyzed.text.isEmpty() &&
                            !m_IsBase && (reference->isOfBase || !m_Rules.isPosix());
    const AnalyzedText* base = isCompared ? &reference->analyzed : nullptr;
    const AnalyzedText analyzed(text, base);
    const TextToCheck toCheck{analyzed, base, m_Rules, m_BaseRules,
                              reference != nullptr ? reference->comment : QString()};
    const TextFindings findings =
        m_File.isShort ? checkShortText(toCheck, limitsOf(entry.url)) : ::checkText(toCheck);
    for (const TextFinding& finding : findings)
        add(finding.id, entry.url,
            placeInString(m_File.document.tree(), entry.text, static_cast<int>(finding.offset)),
            finding.reason);
}

void LanguageCheck::checkStaleness(const DocumentTexts::Entry& entry,
                                   const ReferenceTexts::Entry* reference)
{
    // A short text without one of the base is of the base's full text.
    const QString baseText =
        reference != nullptr ? reference->analyzed.text : m_Context.texts.textOf(entry.url);
    const BaseTextRecord& record = m_File.isShort ? m_Context.shortRecord : m_Context.record;
    const auto oldBaseText =
        m_IsBase ? std::nullopt : record.findOldBaseText(entry.url, m_File.language, baseText);
    if (oldBaseText)
        add(QStringLiteral("stale-text"), entry.url, m_File.document.tree().valuePlace(entry.text),
            QStringLiteral("The base text was \"%1\" when this was written, and is \"%2\" now. "
                           "Translate it anew, or say with 'textmanager mark' that it is still "
                           "right.")
                .arg(*oldBaseText, baseText));
}

ShortTextLimits LanguageCheck::limitsOf(const QString& url) const
{
    return {m_Context.settings.shortLength, fullTextOf(url), m_Context.texts.textOf(url)};
}

void LanguageCheck::checkComment(const DocumentTexts::Entry& entry)
{
    if (!entry.isCommentBroken && m_Texts.commentOf(entry).isEmpty())
        add(QStringLiteral("missing-comment"), entry.url,
            m_File.document.tree().valuePlace(entry.text),
            QStringLiteral("The text has no comment for translators. Say where it stands, how long "
                           "it may be, and what its placeholders are."));
}

/** A short text is known by its full text, too. */
void LanguageCheck::checkKnown(const DocumentTexts::Entry& entry)
{
    const bool isOfFull = m_File.isShort && m_Context.texts.find(entry.url) != ReferenceTexts::none;
    if (!m_Context.hasBase || isOfFull)
        return;
    add(QStringLiteral("unknown-url"), entry.url, m_File.document.tree().valuePlace(entry.text),
        QStringLiteral("Neither %1 nor %2 has this URL.")
                .arg(m_Context.settings.base,
                     LanguageDefinitions::getSecondFallbackLanguageFilename()) +
            m_Suggestions.suggest(entry.url));
}

void LanguageCheck::checkMissing()
{
    if (m_IsBase)
        return;
    for (int index = 0; index < m_References.size(); ++index) {
        const ReferenceTexts::Entry& reference = m_References.at(index);
        if (m_Own[static_cast<std::size_t>(index)] != ReferenceTexts::none || !reference.isOfBase ||
            reference.analyzed.text.isEmpty() || m_Texts.isBroken(reference.url) ||
            (m_File.isShort && fitsWithoutShortText(reference)))
            continue;
        add(QStringLiteral("missing-text"), reference.url, Place(),
            QStringLiteral("%1 has a text here, \"%2\". Translate it.")
                .arg(m_Context.settings.base, reference.analyzed.text));
    }
}

/** Whether the full text, which is shown where there is no short one, is short enough. */
bool LanguageCheck::fitsWithoutShortText(const ReferenceTexts::Entry& reference) const
{
    const int longest = m_Context.settings.shortLength > 0
                            ? m_Context.settings.shortLength
                            : allowedLength(reference.comment).value_or(0);
    const QString fullText = fullTextOf(reference.url);
    return !fullText.isEmpty() && !isLongerThan(fullText, longest);
}

void LanguageCheck::checkSameTexts()
{
    if (m_IsBase)
        return;
    for (const std::vector<int>& same : m_References.sameTexts()) {
        // The most frequent translation is the one to choose, of equals the first.
        QVector<const DocumentTexts::Entry*> entries;
        QMap<QString, int> counts;
        for (const int index : same) {
            const int own = m_Own[static_cast<std::size_t>(index)];
            if (own == ReferenceTexts::none)
                continue;
            const auto* entry = &m_Texts.entries()[static_cast<std::size_t>(own)];
            const QString text = m_Texts.textOf(*entry);
            if (text.isEmpty())
                continue;
            entries.append(entry);
            ++counts[text];
        }
        if (entries.isEmpty())
            continue;
        const DocumentTexts::Entry* usual = entries.constFirst();
        for (const DocumentTexts::Entry* entry : qAsConst(entries)) {
            if (counts.value(m_Texts.textOf(*entry)) > counts.value(m_Texts.textOf(*usual)))
                usual = entry;
        }
        reportOthers(entries, *usual);
    }
}

void LanguageCheck::reportOthers(const QVector<const DocumentTexts::Entry*>& entries,
                                 const DocumentTexts::Entry& usual)
{
    for (const DocumentTexts::Entry* entry : entries) {
        const QString text = m_Texts.textOf(*entry);
        if (text == m_Texts.textOf(usual))
            continue;
        add(QStringLiteral("inconsistent-text"), entry->url,
            m_File.document.tree().valuePlace(entry->text),
            QStringLiteral("The same text of the base is \"%1\" at %2. Choose one of them, if both "
                           "mean the same.")
                .arg(m_Texts.textOf(usual), usual.url));
    }
}

QString LanguageCheck::fullTextOf(const QString& url) const
{
    const auto node = m_FullTexts.constFind(url);
    return node == m_FullTexts.constEnd() ? QString() : m_Full->document.tree().stringOf(*node);
}

void LanguageCheck::add(const QString& id, const QString& url, const Place& place,
                        const QString& reason)
{
    m_Findings.append(
        {id, findCheck(id)->findingClass, m_File.file, place, m_File.language, url, reason});
}
