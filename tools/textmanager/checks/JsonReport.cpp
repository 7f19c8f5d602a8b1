#include "CheckList.h"
#include "CheckReports.h"

#include <QJsonArray>

namespace
{

QJsonObject toJson(const Finding& finding)
{
    return {{QStringLiteral("id"), finding.id},
            {QStringLiteral("class"), nameOf(finding.findingClass)},
            {QStringLiteral("file"), finding.file},
            {QStringLiteral("line"), finding.place.line},
            {QStringLiteral("column"), finding.place.column},
            {QStringLiteral("language"), finding.language},
            {QStringLiteral("url"), finding.url},
            {QStringLiteral("reason"), finding.reason}};
}

QJsonObject toJson(const LanguageCoverage& coverage)
{
    return {{QStringLiteral("language"), coverage.language},
            {QStringLiteral("texts"), coverage.texts},
            {QStringLiteral("translated"), coverage.translated},
            {QStringLiteral("missing"), coverage.missing()},
            {QStringLiteral("share"), coverage.share()}};
}

} // namespace

QJsonObject toJson(const CheckResult& result)
{
    QJsonArray findings;
    for (const Finding& finding : result.findings)
        findings.append(toJson(finding));
    QJsonArray languages;
    for (const LanguageCoverage& coverage : result.languages)
        languages.append(toJson(coverage));
    return {{QStringLiteral("findings"), findings}, {QStringLiteral("languages"), languages}};
}
