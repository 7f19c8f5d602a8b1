#include "CheckList.h"
#include "CheckReports.h"
#include "DocumentTexts.h"
#include "TextKey.h"

#include "LanguageDefinitions.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>

namespace
{

QByteArray readPart(const char* name)
{
    QFile file(QStringLiteral(":/checks/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("The page's part %s is not built in.", name);
    return file.readAll();
}

/** The texts of all files by file and URL. */
class TextLookUp
{
public:
    explicit TextLookUp(const LanguageCatalog& catalog)
    {
        for (const CatalogFile& file : catalog.files()) {
            const DocumentTexts texts(file.document);
            for (const DocumentTexts::Entry& entry : texts.entries())
                m_Texts[file.file].insert(entry.url, texts.textOf(entry));
        }
    }

    QString find(const CatalogFile* file, const QString& url) const
    {
        return file == nullptr ? QString() : m_Texts.value(file->file).value(url);
    }
    QString find(const QString& file, const QString& url) const
    {
        return m_Texts.value(file).value(url);
    }
    bool has(const CatalogFile& file, const QString& url) const
    {
        return m_Texts.value(file.file).contains(url);
    }

private:
    QHash<TextKey, QHash<TextKey, QString>> m_Texts;
};

/** "de-DE" for "de_DE", as a browser wants it; POSIX is English without a country. */
QString toLanguageTag(const QString& key)
{
    if (key == LanguageDefinitions::getSecondFallbackLanguageFilename())
        return QStringLiteral("en");
    QString tag = key.section(QLatin1Char('.'), 0, 0).section(QLatin1Char('@'), 0, 0);
    return tag.replace(QLatin1Char('_'), QLatin1Char('-'));
}

QJsonArray describeChecks()
{
    QJsonArray checks;
    for (const CheckDescription& check : allChecks())
        checks.append(QJsonObject{{QStringLiteral("id"), check.id},
                                  {QStringLiteral("class"), nameOf(check.findingClass)},
                                  {QStringLiteral("summary"), check.summary},
                                  {QStringLiteral("advice"), check.advice}});
    return checks;
}

QJsonArray describeFindings(const CheckResult& result, const LanguageCatalog& catalog,
                            const CheckSettings& settings, const TextLookUp& texts)
{
    QHash<TextKey, bool> areShort;
    for (const CatalogFile& file : catalog.files())
        areShort.insert(file.file, file.isShort);
    QJsonArray findings = toJson(result).value(QStringLiteral("findings")).toArray();
    for (auto&& element : findings) {
        QJsonObject finding = element.toObject();
        const QString url = finding.value(QStringLiteral("url")).toString();
        const QString file = finding.value(QStringLiteral("file")).toString();
        const CatalogFile* base = catalog.find(settings.base, areShort.value(file));
        finding.insert(QStringLiteral("text"), texts.find(file, url));
        finding.insert(QStringLiteral("base"), texts.find(base, url));
        element = finding;
    }
    return findings;
}

/** For each URL whether the language has its text: "t" translated, "e" empty, "m" missing. */
QString describeStates(const CatalogFile* file, const QStringList& urls, const TextLookUp& texts)
{
    QString states;
    for (const QString& url : urls) {
        const bool isThere = file != nullptr && texts.has(*file, url);
        states.append(QLatin1Char(!isThere ? 'm' : texts.find(file, url).isEmpty() ? 'e' : 't'));
    }
    return states;
}

QJsonObject describeAll(const CheckResult& result, const LanguageCatalog& catalog,
                        const CheckSettings& settings)
{
    const TextLookUp texts(catalog);
    QStringList urls;
    if (const CatalogFile* base = catalog.find(settings.base)) {
        const DocumentTexts baseTexts(base->document);
        for (const DocumentTexts::Entry& entry : baseTexts.entries())
            urls.append(entry.url);
    }
    QJsonArray languages;
    for (const LanguageCoverage& coverage : result.languages)
        languages.append(
            QJsonObject{{QStringLiteral("key"), coverage.language},
                        {QStringLiteral("tag"), toLanguageTag(coverage.language)},
                        {QStringLiteral("texts"), coverage.texts},
                        {QStringLiteral("translated"), coverage.translated},
                        {QStringLiteral("states"),
                         describeStates(catalog.find(coverage.language), urls, texts)}});
    return {{QStringLiteral("base"), settings.base},
            {QStringLiteral("baseTag"), toLanguageTag(settings.base)},
            {QStringLiteral("failed"), result.isFailed(settings)},
            {QStringLiteral("checks"), describeChecks()},
            {QStringLiteral("languages"), languages},
            {QStringLiteral("urls"), QJsonArray::fromStringList(urls)},
            {QStringLiteral("findings"), describeFindings(result, catalog, settings, texts)}};
}

} // namespace

QByteArray toHtml(const CheckResult& result, const LanguageCatalog& catalog,
                  const CheckSettings& settings, const QString& title)
{
    QByteArray data =
        QJsonDocument(describeAll(result, catalog, settings)).toJson(QJsonDocument::Compact);
    data.replace('<', "\\u003c"); // no text ends the script that it stands in
    QByteArray page = readPart("page.html");
    page.replace("{{title}}", title.toHtmlEscaped().toUtf8());
    page.replace("{{style}}", readPart("page.css"));
    page.replace("{{script}}", readPart("page.js"));
    page.replace("{{data}}", data); // the last: what is in it stays as it is
    return page;
}
