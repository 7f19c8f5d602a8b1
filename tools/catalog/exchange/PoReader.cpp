#include "PoReader.h"

#include "ExchangeEncoding.h"
#include "PoContext.h"
#include "Utf8.h"
#include "VisibleControls.h"

namespace
{

using State = ExchangeUnit::State;

/** How many digits of a base stand there, up to @p most. */
QString::size_type countDigits(const QString& line, QString::size_type index, int base,
                               QString::size_type most)
{
    QString::size_type count = 0;
    bool isDigit = index < line.size();
    while (isDigit && count < most) {
        line.mid(index + count, 1).toUShort(&isDigit, base);
        count += isDigit ? 1 : 0;
    }
    return count;
}

/** Reads the bytes that neighbouring escapes such as "\303\274" are, and goes behind them. */
QByteArray readBytes(const QString& line, QString::size_type& index)
{
    QByteArray bytes;
    while (index < line.size() && line.at(index) == QLatin1Char('\\')) {
        const bool isHexadecimal = line.mid(index + 1, 1) == QLatin1String("x");
        const int base = isHexadecimal ? 16 : 8;
        const auto begin = index + (isHexadecimal ? 2 : 1);
        const auto count = countDigits(line, begin, base, isHexadecimal ? 2 : 3);
        if (count == 0)
            break;
        bytes += static_cast<char>(line.mid(begin, count).toUShort(nullptr, base));
        index = begin + count;
    }
    return bytes;
}

/** Reads what stands at a backslash, and goes behind it; nothing when that means nothing. */
std::optional<QString> readEscape(const QString& line, QString::size_type& index)
{
    static const QString names = QStringLiteral("abfnrtv\\\"?'");
    static const QString characters = QStringLiteral("\a\b\f\n\r\t\v\\\"?'");
    const QByteArray bytes = readBytes(line, index);
    if (!bytes.isEmpty())
        return decodeUtf8(bytes);
    const auto known = index + 1 < line.size() ? names.indexOf(line.at(index + 1)) : -1;
    if (known < 0)
        return std::nullopt;
    index += 2;
    return characters.at(known);
}

/** Whether the character means something in a text between quotation marks. */
bool isMark(QChar character)
{
    return character == QLatin1Char('\\') || character == QLatin1Char('"');
}

QString::size_type skipBlanks(const QString& line, QString::size_type index)
{
    while (index < line.size() && line.at(index).isSpace())
        ++index;
    return index;
}

} // namespace

std::optional<ExchangeFault> PoReader::read(const QByteArray& bytes)
{
    const std::optional<QString> decoded = decodeUtf(bytes);
    if (!decoded)
        return ExchangeFault{{}, QStringLiteral("is not encoded in UTF-8. Save it as UTF-8.")};
    const QString& text = *decoded;
    for (QString::size_type start = 0; start < text.size() && !m_Fault;) {
        const auto end = text.indexOf(QLatin1Char('\n'), start);
        const auto next = end < 0 ? text.size() : end;
        ++m_Line;
        readLine(text.mid(start, next - start));
        start = next + 1;
    }
    if (!m_Fault)
        finishEntry();
    if (!m_Fault && !m_HasEntry)
        m_Fault = ExchangeFault{{1, 1}, QStringLiteral("is empty.")};
    return m_Fault;
}

void PoReader::readLine(const QString& line)
{
    const auto start = skipBlanks(line, 0);
    if (start == line.size())
        return;
    if (line.at(start) == QLatin1Char('#'))
        readComment(line.mid(start));
    else if (line.at(start) == QLatin1Char('"'))
        readString(line, start);
    else
        readKeyword(line, start);
}

void PoReader::readComment(const QString& line)
{
    if (m_Entry.text)
        finishEntry();
    const QString content = line.mid(2);
    if (line.startsWith(QLatin1String("#."))) {
        m_Entry.comment.append(content.startsWith(QLatin1Char(' ')) ? content.mid(1) : content);
    } else if (line.startsWith(QLatin1String("#,"))) {
        for (const QString& flag : content.split(QLatin1Char(',')))
            m_Entry.isFuzzy = m_Entry.isFuzzy || flag.trimmed() == QLatin1String("fuzzy");
    } else if (line.startsWith(QLatin1String("#|"))) {
        const auto start = skipBlanks(line, 2);
        if (start < line.size() && line.at(start) == QLatin1Char('"'))
            readString(line, start);
        else
            readKeyword(line, start);
    }
}

void PoReader::readKeyword(const QString& line, QString::size_type start)
{
    const auto quote = line.indexOf(QLatin1Char('"'), start);
    const QString keyword = line.mid(start, quote < 0 ? -1 : quote - start).trimmed();
    m_pTarget =
        targetOf(line.startsWith(QLatin1String("#|")) ? QStringLiteral("#| ") + keyword : keyword);
    if (m_pTarget == nullptr)
        fail(start, QStringLiteral("found '%1', expected msgctxt, msgid, msgstr or a text in "
                                   "quotation marks")
                        .arg(keyword));
    else if (quote < 0)
        fail(line.size(), QStringLiteral("a text in quotation marks is missing"));
    else
        readString(line, quote);
}

QString* PoReader::targetOf(const QString& keyword)
{
    const bool startsEntry =
        keyword == QLatin1String("msgctxt") || (keyword == QLatin1String("msgid") && m_Entry.id);
    if (startsEntry && (m_Entry.text || m_Entry.id))
        finishEntry();
    if (m_Entry.line == 0 && !keyword.startsWith(QLatin1Char('#')))
        m_Entry.line = m_Line;
    if (keyword == QLatin1String("#| msgid"))
        return &m_Entry.previousId;
    if (keyword.startsWith(QLatin1String("#| msg")))
        return &m_StrUnused;
    if (keyword == QLatin1String("msgctxt"))
        return beginText(m_Entry.context);
    if (keyword == QLatin1String("msgid"))
        return beginText(m_Entry.id);
    if (keyword == QLatin1String("msgstr"))
        return beginText(m_Entry.text);
    if (keyword != QLatin1String("msgid_plural") && !keyword.startsWith(QLatin1String("msgstr[")))
        return nullptr;
    m_Entry.hasPlural = true;
    return keyword == QLatin1String("msgid_plural") ? &m_StrUnused : beginText(m_Entry.text);
}

QString* PoReader::beginText(std::optional<QString>& part)
{
    part = QString();
    return &*part;
}

void PoReader::readString(const QString& line, QString::size_type start)
{
    if (m_pTarget == nullptr) {
        fail(start, QStringLiteral("found a text that belongs to nothing"));
        return;
    }
    QString::size_type index = start + 1;
    while (index < line.size() && line.at(index) != QLatin1Char('"')) {
        const auto begin = index;
        while (index < line.size() && !isMark(line.at(index)))
            ++index;
        m_pTarget->append(line.constData() + begin, index - begin);
        if (index == line.size() || line.at(index) == QLatin1Char('"'))
            continue;
        const auto backslash = index;
        const std::optional<QString> text = readEscape(line, index);
        if (!text) {
            fail(backslash, QStringLiteral("the backslash begins nothing that is known"));
            return;
        }
        *m_pTarget += *text;
    }
    if (index >= line.size())
        fail(line.size(), QStringLiteral("the quotation mark at the end is missing"));
    else if (skipBlanks(line, index + 1) < line.size())
        fail(index + 1, QStringLiteral("there is something behind the text"));
}

void PoReader::finishEntry()
{
    const Entry entry = m_Entry;
    m_Entry = Entry();
    m_pTarget = nullptr;
    if (!entry.id && !entry.text && !entry.context)
        return; // comments alone
    m_HasEntry = true;
    if (!entry.id || !entry.text) {
        m_Fault = ExchangeFault{{entry.line, 1},
                                QStringLiteral("malformed PO: an entry needs both "
                                               "msgid and msgstr.")};
    } else if (!entry.context && entry.id->isEmpty()) {
        readHeader(*entry.text);
    } else if (!entry.context || entry.hasPlural) {
        m_File.unusable.append(
            {{entry.line, 1},
             entry.hasPlural
                 ? QStringLiteral("an entry with plural forms is no text of a language file.")
                 : QStringLiteral("an entry without msgctxt names no text URL.")});
    } else {
        ExchangeUnit unit;
        PoContext::read(*entry.context, unit);
        unit.place = {entry.line, 1};
        unit.baseText = hideControls(*entry.id);
        unit.text = hideControls(*entry.text);
        unit.comment = hideControls(entry.comment.join(QLatin1Char('\n')));
        unit.previousBaseText = hideControls(entry.previousId);
        unit.state = entry.isFuzzy         ? State::Stale
                     : unit.text.isEmpty() ? State::Missing
                                           : State::Translated;
        m_File.units.append(unit);
    }
}

void PoReader::readHeader(const QString& fields)
{
    for (const QString& line : fields.split(QLatin1Char('\n'))) {
        const QString name = line.section(QLatin1Char(':'), 0, 0).trimmed();
        const QString value = line.section(QLatin1Char(':'), 1).trimmed();
        if (name == QLatin1String("Language"))
            m_File.language = value;
        else if (name == QLatin1String("X-Source-Language"))
            m_File.baseLanguage = value;
    }
}

void PoReader::fail(QString::size_type index, const QString& reason)
{
    m_Fault = ExchangeFault{{m_Line, static_cast<int>(index) + 1},
                            QStringLiteral("malformed PO: %1.").arg(reason)};
}
