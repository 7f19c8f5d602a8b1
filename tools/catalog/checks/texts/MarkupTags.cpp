#include "MarkupTags.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace
{

QSet<QString> setOf(const char* names)
{
    const QStringList list = QString::fromLatin1(names).split(QLatin1Char(' '));
    return QSet<QString>(list.begin(), list.end());
}

bool isOfHtml(const QString& name)
{
    static const QSet<QString> names =
        setOf("a abbr b big blockquote body br center cite code dd del dfn div dl dt em font h1 h2 "
              "h3 h4 h5 h6 head hr html i img ins kbd li mark nobr ol p pre q rp rt ruby s samp "
              "small span strike strong style sub sup table tbody td tfoot th thead title tr tt u "
              "ul var wbr");
    return names.contains(name);
}

bool isNeverClosed(const QString& name)
{
    static const QSet<QString> names = setOf("br hr img wbr");
    return names.contains(name);
}

/** Whether HTML closes it by itself. */
bool mayStayOpen(const QString& name)
{
    static const QSet<QString> names = setOf("dd dt li p tbody td tfoot th thead tr");
    return names.contains(name);
}

} // namespace

MarkupTags::MarkupTags(const QString& text)
{
    findTags(text);
    findCharacterNames(text);
}

void MarkupTags::findTags(const QString& text)
{
    if (!text.contains(QLatin1Char('<')))
        return;
    static const QRegularExpression pattern(
        QStringLiteral("<(/?)([A-Za-z][A-Za-z0-9-]*)(?:\\s[^<>]*?)?(/?)>"));
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QString name = match.captured(2).toLower();
        const bool isClosing = !match.captured(1).isEmpty();
        const bool isWhole = !isClosing && (!match.captured(3).isEmpty() || isNeverClosed(name));
        m_Candidates.append(
            {name, isClosing, isWhole, match.capturedStart(), match.capturedLength()});
    }
}

void MarkupTags::findCharacterNames(const QString& text)
{
    if (!text.contains(QLatin1Char('&')))
        return;
    static const QRegularExpression pattern(
        QStringLiteral("&(?:[A-Za-z][A-Za-z0-9]*|#[0-9]+|#[xX][0-9A-Fa-f]+);"));
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        m_CharacterNames.append({match.capturedStart(), match.capturedLength()});
    }
}

bool MarkupTags::covers(QString::size_type offset) const
{
    const auto isIn = [=](const auto& part) {
        return offset >= part.offset && offset < part.offset + part.length;
    };
    return std::any_of(m_CharacterNames.begin(), m_CharacterNames.end(), isIn) ||
           std::any_of(m_Candidates.begin(), m_Candidates.end(),
                       [&](const Tag& tag) { return isIn(tag) && isMarkup(tag.name); });
}

MarkupTags::Fault MarkupTags::findUnbalanced() const
{
    QVector<Tag> open;
    for (const Tag& tag : m_Candidates) {
        if (tag.isWhole || !isMarkup(tag.name))
            continue;
        if (!tag.isClosing) {
            open.append(tag);
            continue;
        }
        while (!open.isEmpty() && open.last().name != tag.name && mayStayOpen(open.last().name))
            open.removeLast();
        if (open.isEmpty() || open.last().name != tag.name)
            return {QStringLiteral("%1 closes what is not open there").arg(tag.toString()),
                    tag.offset};
        open.removeLast();
    }
    for (const Tag& tag : qAsConst(open)) {
        if (!mayStayOpen(tag.name))
            return {QStringLiteral("%1 is opened and not closed").arg(tag.toString()), tag.offset};
    }
    return {};
}

MarkupTags::Fault MarkupTags::compareWithBase(const MarkupTags& base) const
{
    const auto collect = [&](const QVector<Tag>& tags) {
        QStringList names;
        for (const Tag& tag : tags) {
            if (isMarkup(tag.name) || base.isMarkup(tag.name))
                names.append(tag.toString());
        }
        return names;
    };
    QStringList missing = collect(base.m_Candidates);
    for (const Tag& tag : m_Candidates) {
        const bool isTag = isMarkup(tag.name) || base.isMarkup(tag.name);
        if (isTag && !missing.removeOne(tag.toString()))
            return {
                QStringLiteral("%1 is not in the base's text, or not as often").arg(tag.toString()),
                tag.offset};
    }
    if (missing.isEmpty())
        return {};
    return {QStringLiteral("lacks %1 of the base's text").arg(missing.join(QStringLiteral(", "))),
            0};
}

QString MarkupTags::Tag::toString() const
{
    const bool isMarkedWhole = isWhole && !isNeverClosed(name);
    return QStringLiteral("<%1%2%3>")
        .arg(QLatin1String(isClosing ? "/" : ""), name, QLatin1String(isMarkedWhole ? "/" : ""));
}

bool MarkupTags::isMarkup(const QString& name) const
{
    if (isOfHtml(name))
        return true;
    const auto has = [&](bool isClosing) {
        return std::any_of(m_Candidates.begin(), m_Candidates.end(), [&](const Tag& tag) {
            return tag.name == name && (tag.isWhole || tag.isClosing == isClosing);
        });
    };
    return has(true) && has(false);
}
