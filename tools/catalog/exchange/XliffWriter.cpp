#include "XliffWriter.h"

#include "LanguageTags.h"
#include "TextLength.h"
#include "VisibleControls.h"
#include "XliffNames_p.h"

#include <QUrl>

namespace
{

using State = ExchangeUnit::State;

QString idOf(const ExchangeUnit& unit, const QString& shownUrl)
{
    const QByteArray id = QUrl::toPercentEncoding(shownUrl, "/");
    return QString::fromLatin1(id) + (unit.isShort ? XliffNames::shortMark() : QString());
}

QString nameOfState(State state)
{
    switch (state) {
    case State::Translated:
        return QStringLiteral("translated");
    case State::Stale:
        return QStringLiteral("needs-review-translation");
    case State::Missing:
    case State::Unknown:
        break;
    }
    return QStringLiteral("needs-translation");
}

} // namespace

XliffWriter::XliffWriter()
    : m_Writer(&m_Text)
{
    m_Writer.setAutoFormatting(true);
    m_Writer.setAutoFormattingIndent(0);
}

QByteArray XliffWriter::write(const ExchangeFile& file)
{
    m_Writer.writeStartDocument();
    m_Writer.writeStartElement(QStringLiteral("xliff"));
    writeAttribute(QStringLiteral("xmlns"),
                   QStringLiteral("urn:oasis:names:tc:xliff:document:1.2"));
    writeAttribute(QStringLiteral("version"), QStringLiteral("1.2"));
    m_Writer.writeStartElement(QStringLiteral("file"));
    writeAttribute(QStringLiteral("original"), file.language);
    writeAttribute(QStringLiteral("datatype"), QStringLiteral("plaintext"));
    writeAttribute(QStringLiteral("source-language"), tagOfLanguage(file.baseLanguage));
    writeAttribute(QStringLiteral("target-language"), tagOfLanguage(file.language));
    m_Writer.writeStartElement(QStringLiteral("body"));
    writeUnits(file.units);
    m_Writer.writeEndDocument();
    return m_Text.toUtf8();
}

void XliffWriter::writeAttribute(const QString& name, const QString& value)
{
    m_Writer.writeAttribute(name, value);
}

void XliffWriter::writeUnits(const QVector<ExchangeUnit>& units)
{
    bool hasShort = false;
    for (const ExchangeUnit& unit : units) {
        hasShort = hasShort || unit.isShort;
        if (!unit.isShort)
            writeUnit(unit);
    }
    if (!hasShort)
        return;
    m_Writer.writeStartElement(QStringLiteral("group"));
    writeAttribute(QStringLiteral("restype"), XliffNames::typeOfShortTexts());
    for (const ExchangeUnit& unit : units) {
        if (unit.isShort)
            writeUnit(unit);
    }
    m_Writer.writeEndElement();
}

void XliffWriter::writeUnit(const ExchangeUnit& unit)
{
    const QString url = showControls(unit.url);
    m_Writer.writeStartElement(QStringLiteral("trans-unit"));
    writeAttribute(QStringLiteral("id"), idOf(unit, url));
    writeAttribute(QStringLiteral("resname"), url);
    if (unit.state == State::Translated)
        writeAttribute(QStringLiteral("approved"), QStringLiteral("yes"));
    writeLimit(unit.comment);
    writeAttribute(QStringLiteral("xml:space"), QStringLiteral("preserve"));
    writeText(QStringLiteral("source"), unit.baseText);
    m_Writer.writeStartElement(QStringLiteral("target"));
    writeAttribute(QStringLiteral("state"), nameOfState(unit.state));
    m_Writer.writeCharacters(showControls(unit.text));
    m_Writer.writeEndElement();
    if (!unit.previousBaseText.isEmpty())
        writePrevious(unit);
    if (!unit.comment.isEmpty())
        writeText(QStringLiteral("note"), unit.comment);
    m_Writer.writeEndElement();
}

void XliffWriter::writeLimit(const QString& comment)
{
    const int limit = allowedLength(comment).value_or(0);
    if (limit == 0)
        return;
    writeAttribute(QStringLiteral("maxwidth"), QString::number(limit));
    writeAttribute(QStringLiteral("size-unit"), QStringLiteral("char"));
}

/** What was to be translated, and the translation of that. */
void XliffWriter::writePrevious(const ExchangeUnit& unit)
{
    m_Writer.writeStartElement(QStringLiteral("alt-trans"));
    writeAttribute(QStringLiteral("alttranstype"), QStringLiteral("previous-version"));
    writeText(QStringLiteral("source"), unit.previousBaseText);
    writeText(QStringLiteral("target"), unit.text);
    m_Writer.writeEndElement();
}

void XliffWriter::writeText(const QString& element, const QString& text)
{
    m_Writer.writeTextElement(element, showControls(text));
}
