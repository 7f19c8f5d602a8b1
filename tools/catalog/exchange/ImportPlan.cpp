#include "ImportPlan.h"

#include "ComparingChecks_p.h"
#include "MessageChecks_p.h"
#include "TextChecks.h"
#include "TextKey.h"
#include "WritingRules.h"

#include <QHash>

#include <algorithm>

namespace
{

using State = ExchangeUnit::State;

class Planner
{
public:
    Planner(const ExchangeTexts& texts, const ImportOptions& options)
        : m_Texts(texts)
        , m_Options(options)
        , m_Rules(texts.language)
        , m_RulesOfBase(texts.baseLanguage)
    {
    }

    void add(const ExchangeUnit& unit)
    {
        if (unit.text.isEmpty())
            return;
        const QString reason = findRefusal(unit);
        if (reason.isEmpty())
            take(unit);
        else
            m_Plan.leftOut.append({unit.place, nameOf(unit) + QStringLiteral(": ") + reason});
    }

    ImportPlan finish(const QVector<ExchangeFault>& unusable)
    {
        m_Plan.leftOut += unusable;
        std::stable_sort(m_Plan.leftOut.begin(), m_Plan.leftOut.end(),
                         [](const ExchangeFault& one, const ExchangeFault& other) {
                             return one.place.line < other.place.line;
                         });
        return m_Plan;
    }

private:
    static QString nameOf(const ExchangeUnit& unit)
    {
        return unit.isShort ? QStringLiteral("short text of %1").arg(unit.url) : unit.url;
    }

    QString currentText(const ExchangeUnit& unit) const
    {
        return m_Texts.side(unit.isShort).language.text(unit.url);
    }

    /** Why the text cannot be taken; empty when it can. */
    QString findRefusal(const ExchangeUnit& unit)
    {
        if (!m_Texts.hasBaseText(unit.url, unit.isShort))
            return QStringLiteral("is gone: '%1' has no such text any more.")
                .arg(m_Texts.baseLanguage);
        const QPair<QString, bool> key(unit.url, unit.isShort);
        const int firstLine = m_Lines.value(key, 0);
        m_Lines.insert(key, unit.place.line);
        if (firstLine > 0)
            return QStringLiteral("stands there twice, first in line %1. Remove one of them.")
                .arg(firstLine);
        if (unit.text == currentText(unit))
            return QString();
        const QString reason = m_Options.areStaleTaken ? QString() : findStaleness(unit);
        return reason.isEmpty() && !m_Options.areFaultsIgnored ? findError(unit) : reason;
    }

    QString findStaleness(const ExchangeUnit& unit) const
    {
        const QString baseText = m_Texts.baseText(unit.url, unit.isShort);
        if (unit.isBaseTextKnown && unit.baseText != baseText)
            return QStringLiteral("the base text has changed since the export, from \"%1\" to "
                                  "\"%2\". Translate it anew, or take it with --stale.")
                .arg(unit.baseText, baseText);
        const auto oldBaseText = findOldBaseText(unit);
        if (!unit.isBaseTextKnown && oldBaseText)
            return QStringLiteral("the base text has changed, from \"%1\" to \"%2\", and the file "
                                  "does not tell which of them this is of. Take it with --stale, "
                                  "and mark it with 'textmanager mark' when it is right.")
                .arg(*oldBaseText, baseText);
        if (unit.state == State::Stale)
            return QStringLiteral("is marked as to be looked at again. Remove the mark when it is "
                                  "right, or take it with --stale.");
        return QString();
    }

    QString findError(const ExchangeUnit& unit) const
    {
        const QString baseText = m_Texts.baseText(unit.url, unit.isShort);
        if (!mayHaveError(baseText) && !mayHaveError(unit.text))
            return QString();
        const AnalyzedText base(baseText);
        const AnalyzedText text(unit.text, &base);
        TextFindings findings;
        const TextToCheck toCheck{text, &base, m_Rules, m_RulesOfBase, QString()};
        findMessageFaults(toCheck, findings);
        findOtherPlaceholders(toCheck, findings);
        findOtherMarkup(toCheck, findings);
        return findings.isEmpty() ? QString()
                                  : findings.first().reason +
                                        QStringLiteral(" Correct it, or take it with --force.");
    }

    /** Without these there are neither placeholders nor markup. */
    static bool mayHaveError(const QString& text)
    {
        return std::any_of(text.begin(), text.end(), [](QChar character) {
            return character == QLatin1Char('%') || character == QLatin1Char('{') ||
                   character == QLatin1Char('<');
        });
    }

    void take(const ExchangeUnit& unit)
    {
        const QString baseText = m_Texts.baseText(unit.url, unit.isShort);
        const std::optional<QString> oldBaseText = findOldBaseText(unit);
        ImportPlan::NewText text{unit.url, unit.isShort, unit.text, baseText, false, unit.place};
        if (unit.state == State::Stale && !unit.previousBaseText.isEmpty())
            text.baseText = unit.previousBaseText;
        else if (unit.state == State::Stale || !unit.isBaseTextKnown)
            text.baseText = oldBaseText.value_or(baseText);
        else
            text.baseText = unit.baseText;
        text.isStale = text.baseText != baseText;
        if (unit.text != currentText(unit)) {
            m_Plan.texts.append(text);
        } else if (oldBaseText && unit.state == State::Translated && !text.isStale) {
            m_Plan.confirmedTexts.append(text);
        } else {
            ++m_Plan.sameCount;
            m_Plan.staleCount += oldBaseText ? 1 : 0;
        }
    }

    std::optional<QString> findOldBaseText(const ExchangeUnit& unit) const
    {
        return m_Texts.findOldBaseText(unit.url, unit.isShort);
    }

    const ExchangeTexts& m_Texts;
    const ImportOptions m_Options;
    const WritingRules m_Rules;
    const WritingRules m_RulesOfBase;
    QHash<QPair<TextKey, bool>, int> m_Lines; ///< where each text stood
    ImportPlan m_Plan;
};

} // namespace

ImportPlan planImport(const ExchangeFile& file, const ExchangeTexts& texts,
                      const ImportOptions& options)
{
    Planner planner(texts, options);
    for (const ExchangeUnit& unit : file.units)
        planner.add(unit);
    return planner.finish(file.unusable);
}
