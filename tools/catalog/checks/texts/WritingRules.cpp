#include "WritingRules.h"

#include "LanguageDefinitions.h"

#include <QRegularExpression>
#include <QStringList>

namespace
{

bool isOneOf(const QString& language, const char* languages)
{
    return QString::fromLatin1(languages).split(QLatin1Char(' ')).contains(language);
}

/** The part of a key before its country or variety. Norwegian has two ways to be written. */
QString languageOf(const QString& key)
{
    static const QRegularExpression separator(QStringLiteral("[_\\-.@]"));
    const QString language = key.section(separator, 0, 0).toLower();
    return isOneOf(language, "nb nn") ? QStringLiteral("no") : language;
}

bool isClosing(QChar character)
{
    static const QString closing = QString::fromUtf8("\"'”’“‘»«›‹)]}）］】」』〉》*");
    return character.isSpace() || closing.contains(character);
}

/** Behind what a reader sees last, but for quotation marks, brackets and tags. */
QString::size_type endOf(const QString& text)
{
    QString::size_type end = text.size();
    while (end > 0) {
        if (text.at(end - 1) == QLatin1Char('>') &&
            text.lastIndexOf(QLatin1Char('<'), end - 1) >= 0)
            end = text.lastIndexOf(QLatin1Char('<'), end - 1);
        else if (isClosing(text.at(end - 1)))
            --end;
        else
            break;
    }
    return end;
}

/** Whether the dot before @p end is a full stop, and not that of an abbreviation. */
bool endsSentence(const QString& text, QString::size_type end)
{
    const QString before = text.left(end - 1).simplified();
    const QStringList words = before.split(QLatin1Char(' '));
    const QString& last = words.last();
    const bool isAbbreviation =
        last.size() < 5 || last.back().isDigit() || last.contains(QLatin1Char('.'));
    int dotted = 0;
    for (const QString& word : words)
        dotted += word.endsWith(QLatin1Char('.')) ? 1 : 0;
    return words.size() > 1 && !isAbbreviation && (dotted == 0 || words.size() > 3);
}

} // namespace

WritingRules::WritingRules(const QString& languageKey)
    : m_StrKey(languageKey)
    , m_StrLanguage(languageOf(languageKey))
    , m_IsPosix(languageKey == LanguageDefinitions::getSecondFallbackLanguageFilename())
    , m_NeedsFullStops(!m_IsPosix && !isOneOf(m_StrLanguage, "ja th lo bo dz"))
    , m_HasBlanks(!isOneOf(m_StrLanguage, "ja zh yue wuu nan hak th lo km my bo dz"))
    // Where a word said twice is a word of its own: Turkish "tek tek", Indonesian, Hindi, ...
    , m_DoublesWords(isOneOf(
          m_StrLanguage, "vi id ms jv su min ban tl fil ceb haw mi sm to ty fj tr az uz kk ky tk "
                         "tt hi bn mr gu pa ur ne or as ta te kn ml si sd ks mai kok th lo km my "
                         "sw rw zu xh st tn af ht ka hy fa ckb ku he am ti zh ja ko bo dz mn"))
{
}

bool WritingRules::isVarietyOf(const WritingRules& other) const
{
    return m_StrLanguage == other.m_StrLanguage;
}

bool WritingRules::mayDouble(const QString& word) const
{
    if (m_DoublesWords)
        return true;
    const QString lower = word.toLower();
    if (m_StrLanguage == QLatin1String("fr"))
        return isOneOf(lower, "nous vous");
    if (m_StrLanguage == QLatin1String("de"))
        return isOneOf(lower, "die der das sie");
    if (m_StrLanguage == QLatin1String("nl"))
        return isOneOf(lower, "die dat");
    return m_StrLanguage == QLatin1String("en") && isOneOf(lower, "that had");
}

WritingRules::EndMark WritingRules::endMarkOf(const QString& text) const
{
    const QString::size_type end = endOf(text);
    return end == 0 ? EndMark::None : markAt(text, end - 1);
}

QString WritingRules::nameOf(EndMark mark)
{
    switch (mark) {
    case EndMark::Dot:
    case EndMark::FullStop:
        return QStringLiteral("a full stop");
    case EndMark::Question:
        return QStringLiteral("a question mark");
    case EndMark::Exclamation:
        return QStringLiteral("an exclamation mark");
    case EndMark::Colon:
        return QStringLiteral("a colon");
    case EndMark::Ellipsis:
        return QStringLiteral("an ellipsis");
    case EndMark::None:
        break;
    }
    return QStringLiteral("no mark");
}

WritingRules::EndMark WritingRules::markAt(const QString& text, QString::size_type offset) const
{
    static const QString fullStops = QString::fromUtf8("。．｡।॥۔።။។៕།։᠃᠉꓿᙮");
    static const QString questions = QString::fromUtf8("?？؟⸮፧՞;꘏᥅");
    static const QString exclamations = QString::fromUtf8("!！՜߹᥄");
    static const QString colons = QString::fromUtf8(":：፦︓");
    static const QString ellipses = QString::fromUtf8("…⋯");

    if (m_StrLanguage == QLatin1String("hy")) {
        // Armenian asks and exclaims within the word, and its full stop is often typed as a colon.
        if (text.contains(QChar(0x055E)))
            return EndMark::Question;
        if (text.contains(QChar(0x055C)))
            return EndMark::Exclamation;
    }
    const QChar mark = text.at(offset);
    const bool isAscii = mark.unicode() < 0x80;
    if (!isAscii && mark.isLetterOrNumber())
        return EndMark::None;
    if (mark == QLatin1Char(';'))
        return m_StrLanguage == QLatin1String("el") ? EndMark::Question : EndMark::None;
    const bool isPair = offset > 0 && text.at(offset - 1) == mark;
    if (ellipses.contains(mark) || (isPair && (mark == QLatin1Char('.') || mark == QChar(0x3002))))
        return EndMark::Ellipsis;
    if (mark == QLatin1Char('.'))
        return endsSentence(text, offset + 1) ? EndMark::FullStop : EndMark::Dot;
    if (!isAscii && fullStops.contains(mark))
        return EndMark::FullStop;
    if (questions.contains(mark))
        return EndMark::Question;
    if (exclamations.contains(mark))
        return EndMark::Exclamation;
    return colons.contains(mark) ? EndMark::Colon : EndMark::None;
}
