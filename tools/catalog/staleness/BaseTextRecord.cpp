#include "BaseTextRecord.h"

#include "RegularFile.h"
#include "Utf8.h"
#include "VisibleControls.h"

#include "LanguageDefinitions.h"

#include <QDir>
#include <QStringList>

namespace
{

QString firstWord()
{
    return QStringLiteral("base");
}

QString escape(const QString& text)
{
    return showControls(text)
        .replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
        .replace(QLatin1Char('\n'), QStringLiteral("\\n"))
        .replace(QLatin1Char('\t'), QStringLiteral("\\t"));
}

/** A URL at the beginning of a line, which is no remark. */
QString escapeUrl(const QString& url)
{
    const QString escaped = escape(url);
    return escaped.startsWith(QLatin1Char('#')) ? QLatin1Char('\\') + escaped : escaped;
}

QString unescape(const QString& escaped)
{
    QString text;
    for (int index = 0; index < escaped.size(); ++index) {
        const QChar character = escaped.at(index);
        if (character != QLatin1Char('\\') || index + 1 == escaped.size()) {
            text += character;
            continue;
        }
        const QChar name = escaped.at(++index);
        text += name == QLatin1Char('n')   ? QLatin1Char('\n')
                : name == QLatin1Char('t') ? QLatin1Char('\t')
                                           : name;
    }
    return hideControls(text);
}

Finding faultIn(int line, const QString& reason)
{
    return {QStringLiteral("unreadable-file"),
            Finding::Class::Error,
            BaseTextRecord::fileName(),
            {line, 1},
            {},
            {},
            reason};
}

} // namespace

QString BaseTextRecord::fileName()
{
    return QStringLiteral(".textmanager-base-texts");
}

QString BaseTextRecord::pathIn(const QString& folderPath)
{
    return QDir(folderPath).filePath(fileName());
}

BaseTextRecord BaseTextRecord::readFrom(const QString& folderPath, QString& fault)
{
    BaseTextRecord record;
    const QString path = pathIn(folderPath);
    if (isNothingAt(path))
        return record;
    const FileContent content = readRegularFile(path);
    if (!content.bytes)
        fault = QStringLiteral("%1: cannot be read: %2.").arg(path, content.error);
    else if (const auto finding = record.read(*content.bytes))
        fault = QStringLiteral("%1:%2:%3: %4")
                    .arg(path, QString::number(finding->place.line),
                         QString::number(finding->place.column), finding->reason);
    return record;
}

std::optional<Finding> BaseTextRecord::read(const QByteArray& bytes)
{
    const std::optional<QString> text = decodeUtf8(bytes);
    if (!text)
        return faultIn(1, QStringLiteral("is not encoded in UTF-8. Save it as UTF-8."));
    BaseTextRecord record;
    int number = 0;
    for (QString line : text->split(QLatin1Char('\n'))) {
        ++number;
        if (line.endsWith(QLatin1Char('\r'))) // as git may check it out
            line.chop(1);
        const QString reason = record.readLine(line);
        if (!reason.isEmpty())
            return faultIn(number, reason);
    }
    *this = record;
    return std::nullopt;
}

/** @return what is wrong with the line; empty when nothing is. */
QString BaseTextRecord::readLine(const QString& line)
{
    if (line.startsWith(QLatin1Char('#')) || line.trimmed().isEmpty())
        return QString();
    if (line.startsWith(QLatin1String("<<<<<<<")))
        return QStringLiteral("a merge stopped here. Of its lines keep one for each URL and "
                              "language, and remove its marks.");
    const QStringList cells = line.split(QLatin1Char('\t'));
    if (!isBegun() && cells.size() == 2 && cells.first() == firstWord()) {
        m_StrBaseLanguage = cells.at(1).trimmed();
        return QString();
    }
    if (!isBegun() || cells.size() != 3)
        return QStringLiteral("expected a URL, a language and a base text, with a tab between two "
                              "of them. Correct the line, or remove it.");
    const QString baseText = unescape(cells.at(2));
    QMap<QString, QString>& texts = m_Texts[unescape(cells.at(0))];
    if (texts.value(cells.at(1), baseText) != baseText)
        return QStringLiteral("another line has the same URL and language. Keep one of them.");
    texts.insert(cells.at(1), baseText);
    return QString();
}

/** Texts of the base are of no other language, nor are those of the last fallback language. */
bool BaseTextRecord::canBeStale(const QString& language) const
{
    return language != m_StrBaseLanguage &&
           language != LanguageDefinitions::getSecondFallbackLanguageFilename();
}

QByteArray BaseTextRecord::bytes() const
{
    const QLatin1Char tab('\t');
    const QLatin1Char lineFeed('\n');
    QString text = QStringLiteral("# What the base texts were when they were translated. Written "
                                  "by textmanager, which finds stale texts with it.\n") +
                   firstWord() + tab + m_StrBaseLanguage + lineFeed;
    for (auto url = m_Texts.begin(); url != m_Texts.end(); ++url) {
        for (auto entry = url->begin(); entry != url->end(); ++entry)
            text +=
                escapeUrl(url.key()) + tab + entry.key() + tab + escape(entry.value()) + lineFeed;
    }
    return text.toUtf8();
}

void BaseTextRecord::begin(const QString& baseLanguage, const QMap<QString, QString>& baseTexts)
{
    m_StrBaseLanguage = baseLanguage;
    m_Texts.clear();
    for (auto text = baseTexts.begin(); text != baseTexts.end(); ++text)
        m_Texts[text.key()].insert(baseLanguage, text.value());
}

std::optional<QString> BaseTextRecord::baseTextOf(const QString& url, const QString& language) const
{
    const auto texts = m_Texts.find(url);
    if (texts == m_Texts.end())
        return std::nullopt;
    auto text = texts->find(language);
    if (text == texts->end())
        text = texts->find(m_StrBaseLanguage);
    return text == texts->end() ? std::nullopt : std::optional<QString>(text.value());
}

std::optional<QString> BaseTextRecord::findOldBaseText(const QString& url, const QString& language,
                                                       const QString& baseText) const
{
    if (!canBeStale(language))
        return std::nullopt;
    const std::optional<QString> text = baseTextOf(url, language);
    return text == baseText ? std::nullopt : text;
}

void BaseTextRecord::noteBaseText(const QString& url, const QString& before, const QString& after)
{
    if (isBegun() && !m_Texts[url].contains(m_StrBaseLanguage))
        m_Texts[url].insert(m_StrBaseLanguage, before.isEmpty() ? after : before);
}

void BaseTextRecord::noteText(const QString& url, const QString& language, const QString& baseText)
{
    if (!isBegun() || !canBeStale(language))
        return;
    QMap<QString, QString>& texts = m_Texts[url];
    if (texts.value(m_StrBaseLanguage, baseText) != baseText)
        texts.insert(language, baseText);
    else
        texts.remove(language);
    if (!texts.contains(m_StrBaseLanguage))
        texts.insert(m_StrBaseLanguage, baseText);
}

void BaseTextRecord::noteRename(const QString& url, const QString& newUrl)
{
    const QString prefix = url + LanguageDefinitions::getUrlSeparator();
    QMap<QString, QMap<QString, QString>> texts;
    for (auto entry = m_Texts.begin(); entry != m_Texts.end(); ++entry) {
        const bool isMoved = entry.key() == url || entry.key().startsWith(prefix);
        texts.insert(isMoved ? newUrl + entry.key().mid(url.size()) : entry.key(), entry.value());
    }
    m_Texts = texts;
}
