#include "XliffReader.h"

#include "VisibleControls.h"
#include "XliffNames_p.h"

#include <QUrl>

namespace
{

using State = ExchangeUnit::State;

QString urlOf(const QString& id, const QString& resname)
{
    return hideControls(resname.isEmpty() ? QUrl::fromPercentEncoding(id.toUtf8()) : resname);
}

bool isReview(const QString& state)
{
    return state.startsWith(QLatin1String("needs-review"));
}

} // namespace

XliffReader::XliffReader(const QByteArray& bytes, ExchangeFile& file)
    : m_Reader(bytes)
    , m_File(file)
{
}

std::optional<ExchangeFault> XliffReader::read()
{
    while (!m_Reader.atEnd()) {
        m_Reader.readNext();
        if (m_Reader.isDTD())
            m_Reader.raiseError(QStringLiteral("a document type is not taken, since its "
                                               "entities could be anything. Remove it"));
        else if (m_Reader.isStartElement())
            startElement();
        else if (m_Reader.isEndElement() && m_Reader.name() == QLatin1String("group"))
            m_GroupTypes.removeLast();
    }
    if (!m_Reader.hasError())
        return std::nullopt;
    QString reason = m_Reader.errorString();
    if (reason.endsWith(QLatin1Char('.')))
        reason.chop(1);
    return ExchangeFault{place(), QStringLiteral("malformed XLIFF: %1.").arg(reason)};
}

Place XliffReader::place() const
{
    return {static_cast<int>(m_Reader.lineNumber()), static_cast<int>(m_Reader.columnNumber()) + 1};
}

QString XliffReader::attribute(const char* name) const
{
    return m_Reader.attributes().value(QLatin1String(name)).toString();
}

bool XliffReader::isAt(const char* element) const
{
    return m_Reader.name() == QLatin1String(element);
}

void XliffReader::startElement()
{
    if (isAt("file"))
        startFile();
    else if (isAt("group"))
        m_GroupTypes.append(attribute("restype"));
    else if (isAt("trans-unit"))
        readUnit();
    else if (m_IsFirst)
        startDocument();
    m_IsFirst = false;
}

void XliffReader::startDocument()
{
    const QString version = attribute("version");
    if (!isAt("xliff"))
        m_Reader.raiseError(
            QStringLiteral("found <%1>, expected <xliff>").arg(m_Reader.name().toString()));
    else if (!version.isEmpty() && !version.startsWith(QLatin1String("1.")))
        m_Reader.raiseError(
            QStringLiteral("it is of version %1. Save it as XLIFF 1.2").arg(version));
}

void XliffReader::startFile()
{
    const QString base = attribute("source-language");
    const QString language = attribute("target-language");
    const bool isOther = m_HasFile && (base != m_File.baseLanguage || language != m_File.language);
    if (isOther)
        m_Reader.raiseError(QStringLiteral("texts of %1 and of %2 in one file. Divide it")
                                .arg(m_File.language, language));
    m_File.baseLanguage = base;
    m_File.language = language;
    m_HasFile = true;
}

void XliffReader::readUnit()
{
    ExchangeUnit unit;
    unit.place = place();
    const QString id = attribute("id");
    const bool hasShortMark = id.endsWith(XliffNames::shortMark());
    unit.isShort = hasShortMark || m_GroupTypes.contains(XliffNames::typeOfShortTexts());
    unit.url =
        urlOf(hasShortMark ? id.chopped(XliffNames::shortMark().size()) : id, attribute("resname"));
    unit.isBaseTextKnown = false;
    m_UnknownInline.clear();
    m_Approved = attribute("approved");
    while (m_Reader.readNextStartElement())
        readPart(unit);
    if (m_Reader.hasError())
        return;
    if (unit.text.isEmpty())
        unit.state = State::Missing;
    if (m_UnknownInline.isEmpty())
        m_File.units.append(unit);
    else
        m_File.unusable.append(
            {unit.place, QStringLiteral("%1: holds <%2>, which stands for something that is "
                                        "not in the file. Write it as text.")
                             .arg(unit.url, m_UnknownInline)});
}

void XliffReader::readPart(ExchangeUnit& unit)
{
    if (isAt("source")) {
        unit.baseText = readUnitText();
        unit.isBaseTextKnown = true;
    } else if (isAt("target")) {
        readTarget(unit);
    } else if (isAt("note")) {
        unit.comment = readText();
    } else if (isAt("alt-trans")) {
        readPrevious(unit);
    } else {
        m_Reader.skipCurrentElement();
    }
}

/** Some tools say only by the unit, some only by the text whether it is right; some leave what an
 * export said of a text that was missing. */
void XliffReader::readTarget(ExchangeUnit& unit)
{
    const QString state = attribute("state");
    const bool isFinished = state == QLatin1String("translated") ||
                            state == QLatin1String("final") || state == QLatin1String("signed-off");
    const bool isRefused = m_Approved == QLatin1String("no");
    if (isReview(state) || (isRefused && !isFinished))
        unit.state = State::Stale;
    else if (m_Approved == QLatin1String("yes") || (isFinished && !isRefused))
        unit.state = State::Translated;
    unit.text = readUnitText();
}

/** Some tools move a text that is to be looked at again beside its old base text; others put what
 * they remember of other texts there. */
void XliffReader::readPrevious(ExchangeUnit& unit)
{
    const QString type = attribute("alttranstype");
    bool isPrevious =
        type == QLatin1String("previous-version") || (type.isEmpty() && unit.state == State::Stale);
    QString baseText;
    while (m_Reader.readNextStartElement()) {
        const bool isReviewed = isReview(attribute("state"));
        const bool isSource = isAt("source");
        const bool isTarget = isAt("target");
        const QString text = readText();
        if (isSource)
            baseText = text;
        if (isTarget && isReviewed && unit.text.isEmpty()) {
            unit.text = text;
            unit.state = State::Stale;
            isPrevious = true;
        }
    }
    if (isPrevious)
        unit.previousBaseText = baseText;
}

/** The text of an element, also what stands in elements inside it. */
QString XliffReader::readText()
{
    const QString unknownInline = m_UnknownInline;
    const QString text = readUnitText();
    m_UnknownInline = unknownInline;
    return text;
}

/** The same of an element whose text is taken, so that nothing may be lost of it. */
QString XliffReader::readUnitText()
{
    QString text;
    int depth = 1;
    while (depth > 0 && !m_Reader.atEnd()) {
        m_Reader.readNext();
        if (m_Reader.isStartElement()) {
            ++depth;
            if (isAt("x") || isAt("bx") || isAt("ex"))
                m_UnknownInline = m_Reader.name().toString();
        } else if (m_Reader.isEndElement()) {
            --depth;
        } else if (m_Reader.isCharacters()) {
            text += m_Reader.text();
        }
    }
    return hideControls(text);
}
