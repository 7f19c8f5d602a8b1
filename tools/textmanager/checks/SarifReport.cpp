#include "CheckList.h"
#include "CheckReports.h"

#include <QDir>
#include <QJsonArray>
#include <QUrl>

namespace
{

QString folderName()
{
    return QStringLiteral("LANGUAGES");
}

QJsonObject message(const QString& text)
{
    return {{QStringLiteral("text"), text}};
}

QString levelOf(Finding::Class findingClass)
{
    return findingClass == Finding::Class::Info ? QStringLiteral("note") : nameOf(findingClass);
}

QJsonArray describeRules()
{
    QJsonArray rules;
    for (const CheckDescription& check : allChecks())
        rules.append(
            QJsonObject{{QStringLiteral("id"), check.id},
                        {QStringLiteral("shortDescription"), message(check.summary)},
                        {QStringLiteral("fullDescription"),
                         message(check.summary + QLatin1Char(' ') + check.advice)},
                        {QStringLiteral("help"), message(check.advice)},
                        {QStringLiteral("defaultConfiguration"),
                         QJsonObject{{QStringLiteral("level"), levelOf(check.findingClass)}}}});
    return rules;
}

QJsonObject locate(const Finding& finding)
{
    QJsonObject physical{
        {QStringLiteral("artifactLocation"),
         QJsonObject{{QStringLiteral("uri"),
                      QString::fromLatin1(QUrl::toPercentEncoding(finding.file, "/"))},
                     {QStringLiteral("uriBaseId"), folderName()}}}};
    if (finding.place.line > 0)
        physical.insert(QStringLiteral("region"),
                        QJsonObject{{QStringLiteral("startLine"), finding.place.line},
                                    {QStringLiteral("startColumn"), finding.place.column}});
    QJsonObject location{{QStringLiteral("physicalLocation"), physical}};
    if (!finding.url.isEmpty())
        location.insert(
            QStringLiteral("logicalLocations"),
            QJsonArray{QJsonObject{{QStringLiteral("fullyQualifiedName"), finding.url},
                                   {QStringLiteral("kind"), QStringLiteral("resource")}}});
    return location;
}

QJsonObject toSarif(const Finding& finding)
{
    const auto rule = static_cast<int>(findCheck(finding.id) - allChecks().constData());
    QJsonObject result{{QStringLiteral("ruleId"), finding.id},
                       {QStringLiteral("ruleIndex"), rule},
                       {QStringLiteral("level"), levelOf(finding.findingClass)},
                       {QStringLiteral("message"), message(finding.reason)},
                       {QStringLiteral("locations"), QJsonArray{locate(finding)}}};
    if (!finding.language.isEmpty())
        result.insert(QStringLiteral("properties"),
                      QJsonObject{{QStringLiteral("language"), finding.language}});
    return result;
}

} // namespace

QJsonObject toSarif(const CheckResult& result, const QString& folderPath)
{
    QJsonArray results;
    for (const Finding& finding : result.findings)
        results.append(toSarif(finding));
    // A base has to end with "/", or its last name would be replaced.
    const QUrl folder = QUrl::fromLocalFile(QDir(folderPath).absolutePath() + QLatin1Char('/'));
    const QJsonObject driver{{QStringLiteral("name"), QStringLiteral("textmanager check")},
                             {QStringLiteral("version"), QStringLiteral(TEXTMANAGER_VERSION)},
                             {QStringLiteral("rules"), describeRules()}};
    const QJsonObject run{
        {QStringLiteral("tool"), QJsonObject{{QStringLiteral("driver"), driver}}},
        {QStringLiteral("columnKind"), QStringLiteral("unicodeCodePoints")},
        {QStringLiteral("originalUriBaseIds"),
         QJsonObject{{folderName(),
                      QJsonObject{{QStringLiteral("uri"), folder.toString(QUrl::FullyEncoded)}}}}},
        {QStringLiteral("results"), results}};
    return {{QStringLiteral("$schema"),
             QStringLiteral("https://json.schemastore.org/sarif-2.1.0.json")},
            {QStringLiteral("version"), QStringLiteral("2.1.0")},
            {QStringLiteral("runs"), QJsonArray{run}}};
}
