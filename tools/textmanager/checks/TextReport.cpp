#include "CheckList.h"
#include "CheckReports.h"
#include "Console.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace
{

/** Writes in colours, or not. */
class Painter
{
public:
    explicit Painter(bool isColoured)
        : m_IsColoured(isColoured)
    {
    }

    QString bold(const QString& text) const { return paint(text, "1"); }
    QString inColourOf(const QString& text, Finding::Class findingClass) const
    {
        switch (findingClass) {
        case Finding::Class::Error:
            return paint(text, "31");
        case Finding::Class::Warning:
            return paint(text, "33");
        case Finding::Class::Info:
            break;
        }
        return paint(text, "36");
    }
    /** What stands in a file; its control characters must not steer the terminal. */
    QString plain(const QString& text) const
    {
        return m_IsColoured ? QString::fromUtf8(withVisibleControls(text.toUtf8())) : text;
    }
    QString good(const QString& text) const { return paint(text, "32"); }

private:
    QString paint(const QString& text, const char* code) const
    {
        return m_IsColoured ? QStringLiteral("\x1b[%1m%2\x1b[0m").arg(QLatin1String(code), text)
                            : text;
    }

    const bool m_IsColoured;
};

QString toLine(const Finding& finding, const Painter& painter)
{
    const QString place =
        finding.place.line == 0
            ? QStringLiteral("-")
            : QStringLiteral("%1:%2").arg(finding.place.line).arg(finding.place.column);
    const QString kind = painter.inColourOf(
        QStringLiteral("%1 %2").arg(nameOf(finding.findingClass), -7).arg(finding.id, -19),
        finding.findingClass);
    const QString url = finding.url.isEmpty()
                            ? QString()
                            : painter.bold(painter.plain(finding.url)) + QStringLiteral(": ");
    return QStringLiteral("  %1 %2 %3%4")
        .arg(place, -8)
        .arg(kind, url, painter.plain(finding.reason));
}

QString bar(double share)
{
    constexpr int width = 20;
    const int filled = static_cast<int>(std::floor(share / 100 * width));
    return QString(filled, QChar(0x2588)) + QString(width - filled, QChar(0x2591));
}

/** A share is never rounded up to all. */
QString percent(double share)
{
    return QString::number(std::floor(share * 10) / 10, 'f', 1) + QStringLiteral(" %");
}

QString toTable(const QVector<LanguageCoverage>& languages, const CheckSettings& settings,
                const Painter& painter)
{
    int width = 8;
    for (const LanguageCoverage& coverage : languages)
        width = std::max(width, static_cast<int>(painter.plain(coverage.language).size()));
    QStringList lines;
    for (const LanguageCoverage& coverage : languages) {
        const bool isUnder = settings.failUnder && coverage.share() < *settings.failUnder;
        const QString shown =
            QStringLiteral("%1 %2").arg(bar(coverage.share())).arg(percent(coverage.share()), 7);
        const QString painted = isUnder ? painter.inColourOf(shown, Finding::Class::Error)
                                : coverage.missing() == 0
                                    ? painter.good(shown)
                                    : painter.inColourOf(shown, Finding::Class::Warning);
        QString line = QStringLiteral("%1 %2  %3 of %4 texts")
                           .arg(painter.plain(coverage.language), -width)
                           .arg(painted)
                           .arg(coverage.translated)
                           .arg(coverage.texts);
        if (isUnder)
            line += QStringLiteral(", less than %1 %").arg(*settings.failUnder);
        lines.append(line);
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

QString toText(const CheckResult& result, const CheckSettings& settings, bool isColoured)
{
    const Painter painter(isColoured);
    QStringList lines;
    QString file;
    for (const Finding& finding : result.findings) {
        if (lines.isEmpty() || finding.file != file) {
            if (!lines.isEmpty())
                lines.append(QString());
            lines.append(painter.bold(painter.plain(finding.file)));
        }
        file = finding.file;
        lines.append(toLine(finding, painter));
    }
    if (!result.findings.isEmpty() && !result.languages.isEmpty())
        lines.append(QString());
    if (!result.languages.isEmpty())
        lines.append(toTable(result.languages, settings, painter));
    lines.append(QString());
    lines.append(QStringList{counted(result.countOf(Finding::Class::Error), "error"),
                             counted(result.countOf(Finding::Class::Warning), "warning"),
                             counted(result.countOf(Finding::Class::Info), "info")}
                     .join(QStringLiteral(", ")) +
                 QLatin1Char('.'));
    return lines.join(QLatin1Char('\n'));
}
