#include "PoFormat.h"

#include "PoReader.h"
#include "VisibleControls.h"

namespace
{

using State = ExchangeUnit::State;

QString quote(const QString& text)
{
    QString quoted(QLatin1Char('"'));
    for (const QChar character : text) {
        if (character == QLatin1Char('\\') || character == QLatin1Char('"'))
            quoted += QLatin1Char('\\');
        if (character == QLatin1Char('\t'))
            quoted += QStringLiteral("\\t");
        else if (character == QLatin1Char('\n'))
            quoted += QStringLiteral("\\n");
        else
            quoted += character;
    }
    return quoted + QLatin1Char('"');
}

/** A keyword and its text, one of several lines as gettext lays it out. */
QString field(const QString& keyword, const QString& text)
{
    const QLatin1Char lineFeed('\n');
    const auto firstEnd = text.indexOf(lineFeed);
    if (firstEnd < 0 || firstEnd == text.size() - 1)
        return keyword + QLatin1Char(' ') + quote(text) + lineFeed;
    // What continues a previous text is marked as it is.
    const QString prefix =
        keyword.startsWith(QLatin1String("#|")) ? QStringLiteral("#| ") : QString();
    QString lines = keyword + QStringLiteral(" \"\"\n");
    for (QString::size_type start = 0; start < text.size();) {
        const auto end = text.indexOf(lineFeed, start);
        const auto next = end < 0 ? text.size() : end + 1;
        lines += prefix + quote(text.mid(start, next - start)) + lineFeed;
        start = next;
    }
    return lines;
}

QString header(const ExchangeFile& file)
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
    return field(QStringLiteral("msgid"), QString()) + field(QStringLiteral("msgstr"), fields);
}

QString flagsOf(const ExchangeUnit& unit)
{
    QString flags;
    if (unit.state == State::Stale)
        flags += QStringLiteral(", fuzzy");
    if (unit.placeholders == ExchangeUnit::Placeholders::Qt)
        flags += QStringLiteral(", qt-format");
    if (unit.placeholders == ExchangeUnit::Placeholders::Printf)
        flags += QStringLiteral(", c-format");
    return flags.isEmpty() ? QString() : QLatin1Char('#') + flags + QLatin1Char('\n');
}

QString comment(const QString& text)
{
    QString lines;
    for (const QString& line : showControls(text).split(QLatin1Char('\n'))) {
        // Of a backslash at its end, gettext makes one line of two, in comments also.
        const bool needsEnd = line.endsWith(QLatin1Char('\\'));
        lines += QStringLiteral("#. ") + line + QLatin1String(needsEnd ? " \n" : "\n");
    }
    return lines;
}

QString entry(const ExchangeUnit& unit)
{
    QString lines = QStringLiteral("\n");
    if (!unit.comment.isEmpty())
        lines += comment(unit.comment);
    lines += flagsOf(unit);
    // The checks want a text to begin and end with a line feed where its base text does.
    const QLatin1Char lineFeed('\n');
    const auto hasEdge = [&](const QString& text) {
        return text.startsWith(lineFeed) || text.endsWith(lineFeed);
    };
    const auto show = !unit.text.isEmpty() && (hasEdge(unit.baseText) || hasEdge(unit.text))
                          ? showControlsAndEdges
                          : showControls;
    if (!unit.previousBaseText.isEmpty())
        lines += field(QStringLiteral("#| msgid"), showControls(unit.previousBaseText));
    return lines + field(QStringLiteral("msgctxt"), PoContext::write(unit.url, unit.isShort)) +
           field(QStringLiteral("msgid"), show(unit.baseText)) +
           field(QStringLiteral("msgstr"), show(unit.text));
}

} // namespace

QByteArray PoFormat::write(const ExchangeFile& file) const
{
    QString text = header(file);
    for (const ExchangeUnit& unit : file.units)
        text += entry(unit);
    return text.toUtf8();
}

std::optional<ExchangeFault> PoFormat::read(const QByteArray& bytes, ExchangeFile& file) const
{
    file = ExchangeFile();
    return PoReader(file).read(bytes);
}
