#include "PoWriter.h"

#include "Placeholders.h"
#include "PoContext.h"
#include "VisibleControls.h"

#include <QRegularExpression>

namespace
{

using State = ExchangeUnit::State;

const QLatin1Char lineFeed('\n');

/** Whether the pattern, which begins with a percent sign, fits where there is no placeholder. */
bool fitsElsewhere(const QRegularExpression& pattern, const QString& text,
                   const Placeholders& placeholders)
{
    auto matches = pattern.globalMatch(text);
    while (matches.hasNext()) {
        if (!placeholders.covers(matches.next().capturedStart()))
            return true;
    }
    return false;
}

/**
 * The flag that says by which placeholders the tools of gettext are to judge a text; empty where
 * they would see some that are none, as in "50 % off".
 */
QLatin1String formatFlagOf(const QString& baseText, const QString& text)
{
    using Kind = Placeholder::Kind;
    if (!baseText.contains(QLatin1Char('%')))
        return {};
    const Placeholders base(baseText);
    const Placeholders translated(text, &base);
    const auto isSafe = [&](const QRegularExpression& pattern) {
        return !fitsElsewhere(pattern, baseText, base) && !fitsElsewhere(pattern, text, translated);
    };
    static const QRegularExpression forQt(QStringLiteral("%L?\\d"));
    static const QRegularExpression forPrintf(QStringLiteral("%(?!%)(?<!%%)"));
    if (base.has(Kind::Numbered) || base.has(Kind::Count))
        return isSafe(forQt) ? QLatin1String(", qt-format") : QLatin1String();
    const bool isPrintf = base.has(Kind::Printf) || base.has(Kind::PrintfNumbered);
    return isPrintf && isSafe(forPrintf) ? QLatin1String(", c-format") : QLatin1String();
}

bool hasEdge(const QString& text)
{
    return text.startsWith(lineFeed) || text.endsWith(lineFeed);
}

/** What stands for a character behind a backslash; a null character where it needs none. */
char escapeOf(QChar character)
{
    switch (character.unicode()) {
    case '\\':
        return '\\';
    case '"':
        return '"';
    case '\t':
        return 't';
    case '\n':
        return 'n';
    default:
        return '\0';
    }
}

} // namespace

QByteArray PoWriter::write(const ExchangeFile& file)
{
    addHeader(file);
    for (const ExchangeUnit& unit : file.units)
        addEntry(unit);
    return m_Text.toUtf8();
}

void PoWriter::addHeader(const ExchangeFile& file)
{
    // Each is asked for by the check of gettext's tools.
    const QString fields = QStringLiteral("Project-Id-Version: texts\n"
                                          "PO-Revision-Date: \n"
                                          "Last-Translator: \n"
                                          "Language-Team: \n"
                                          "Language: %1\n"
                                          "MIME-Version: 1.0\n"
                                          "Content-Type: text/plain; charset=UTF-8\n"
                                          "Content-Transfer-Encoding: 8bit\n"
                                          "X-Source-Language: %2\n")
                               .arg(file.language, file.baseLanguage);
    addField(QLatin1String("msgid"), QString());
    addField(QLatin1String("msgstr"), fields);
}

void PoWriter::addEntry(const ExchangeUnit& unit)
{
    m_Text += lineFeed;
    if (!unit.comment.isEmpty())
        addComment(unit.comment);
    addFlags(unit);
    if (!unit.previousBaseText.isEmpty())
        addField(QLatin1String("msgid"), showControls(unit.previousBaseText), QLatin1String("#| "));
    addField(QLatin1String("msgctxt"), PoContext::write(unit.url, unit.isShort));
    // The checks want a text to begin and end with a line feed where its base text does.
    const bool isEdgeShown = !unit.text.isEmpty() && (hasEdge(unit.baseText) || hasEdge(unit.text));
    const auto show = isEdgeShown ? showControlsAndEdges : showControls;
    addField(QLatin1String("msgid"), show(unit.baseText));
    addField(QLatin1String("msgstr"), show(unit.text));
}

void PoWriter::addComment(const QString& text)
{
    const QString shown = showControls(text);
    for (QString::size_type start = 0, end = 0; end < shown.size(); start = end + 1) {
        const auto next = shown.indexOf(lineFeed, start);
        end = next < 0 ? shown.size() : next;
        m_Text += QLatin1String("#. ");
        m_Text.append(shown.constData() + start, end - start);
        // Of a backslash at its end, gettext makes one line of two, in comments also.
        if (m_Text.endsWith(QLatin1Char('\\')))
            m_Text += QLatin1Char(' ');
        m_Text += lineFeed;
    }
}

void PoWriter::addFlags(const ExchangeUnit& unit)
{
    const QLatin1String fuzzy(unit.state == State::Stale ? ", fuzzy" : "");
    const QLatin1String format = formatFlagOf(unit.baseText, unit.text);
    if (fuzzy.isEmpty() && format.isEmpty())
        return;
    m_Text += QLatin1Char('#');
    m_Text += fuzzy;
    m_Text += format;
    m_Text += lineFeed;
}

/** Adds a keyword and its text, one of several lines as gettext lays it out. */
void PoWriter::addField(QLatin1String keyword, const QString& text, QLatin1String prefix)
{
    m_Text += prefix;
    m_Text += keyword;
    m_Text += QLatin1Char(' ');
    const auto firstEnd = text.indexOf(lineFeed);
    if (firstEnd < 0 || firstEnd == text.size() - 1) {
        addQuoted(text, 0, text.size());
        return;
    }
    addQuoted(QString(), 0, 0);
    for (QString::size_type start = 0; start < text.size();) {
        const auto end = text.indexOf(lineFeed, start);
        const auto next = end < 0 ? text.size() : end + 1;
        m_Text += prefix;
        addQuoted(text, start, next);
        start = next;
    }
}

/** Adds a part of a text in quotation marks, and ends the line. */
void PoWriter::addQuoted(const QString& text, QString::size_type begin, QString::size_type end)
{
    m_Text += QLatin1Char('"');
    for (auto index = begin; index < end; ++index) {
        const char escape = escapeOf(text.at(index));
        if (escape == '\0')
            continue;
        m_Text.append(text.constData() + begin, index - begin);
        m_Text += QLatin1Char('\\');
        m_Text += QLatin1Char(escape);
        begin = index + 1;
    }
    m_Text.append(text.constData() + begin, end - begin);
    m_Text += QLatin1String("\"\n");
}
