#include "IgnoreRule.h"

#include "CheckList.h"
#include "NearestNames.h"

namespace
{

QString toRegularExpression(const QString& urlPattern)
{
    QString expression = QRegularExpression::escape(urlPattern);
    expression.replace(QStringLiteral("\\*\\*"), QStringLiteral(".*"));
    expression.replace(QStringLiteral("\\*"), QStringLiteral("[^/]*"));
    return QRegularExpression::anchoredPattern(expression);
}

} // namespace

IgnoreRule::IgnoreRule(const QString& rule)
    : m_StrId(rule.section(QLatin1Char(':'), 0, 0))
{
    const QString urlPattern = rule.section(QLatin1Char(':'), 1);
    if (!urlPattern.isEmpty())
        m_Urls.setPattern(toRegularExpression(urlPattern));
    if (findCheck(m_StrId) == nullptr)
        m_StrFault = QStringLiteral("there is no finding '%1'.").arg(m_StrId) +
                     suggestNames(m_StrId, allCheckIds());
    else if (rule.endsWith(QLatin1Char(':')))
        m_StrFault = QStringLiteral("'%1' has no pattern of URLs behind the colon.").arg(rule);
}

bool IgnoreRule::matches(const Finding& finding) const
{
    return finding.id == m_StrId &&
           (m_Urls.pattern().isEmpty() || m_Urls.match(finding.url).hasMatch());
}
