#include "XliffFormat.h"

#include "LanguageTags.h"
#include "VisibleControls.h"

#include <QUrl>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace
{

using State = ExchangeUnit::State;

QString nameSpace()
{
    return QStringLiteral("urn:oasis:names:tc:xliff:document:1.2");
}

QString preserve()
{
    return QStringLiteral("preserve");
}

/** The type of the group that holds the short texts. */
QString typeOfShortTexts()
{
    return QStringLiteral("x-short-texts");
}

/** What follows a URL in the id of its short text; a URL's own "#" is percent-encoded there. */
QString shortMark()
{
    return QStringLiteral("#short");
}

QString idOf(const ExchangeUnit& unit)
{
    const QByteArray id = QUrl::toPercentEncoding(showControls(unit.url), "/");
    return QString::fromLatin1(id) + (unit.isShort ? shortMark() : QString());
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

class XliffWriter
{
public:
    XliffWriter()
        : m_Writer(&m_Text)
    {
        m_Writer.setAutoFormatting(true);
        m_Writer.setAutoFormattingIndent(0);
    }

    QByteArray write(const ExchangeFile& file)
    {
        m_Writer.writeStartDocument();
        m_Writer.writeStartElement(QStringLiteral("xliff"));
        writeAttribute(QStringLiteral("xmlns"), nameSpace());
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

private:
    void writeAttribute(const QString& name, const QString& value)
    {
        m_Writer.writeAttribute(name, value);
    }

    void writeUnits(const QVector<ExchangeUnit>& units)
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
        writeAttribute(QStringLiteral("restype"), typeOfShortTexts());
        for (const ExchangeUnit& unit : units) {
            if (unit.isShort)
                writeUnit(unit);
        }
        m_Writer.writeEndElement();
    }

    void writeUnit(const ExchangeUnit& unit)
    {
        m_Writer.writeStartElement(QStringLiteral("trans-unit"));
        writeAttribute(QStringLiteral("id"), idOf(unit));
        writeAttribute(QStringLiteral("resname"), showControls(unit.url));
        if (unit.state == State::Translated)
            writeAttribute(QStringLiteral("approved"), QStringLiteral("yes"));
        if (unit.limit > 0) {
            writeAttribute(QStringLiteral("maxwidth"), QString::number(unit.limit));
            writeAttribute(QStringLiteral("size-unit"), QStringLiteral("char"));
        }
        writeAttribute(QStringLiteral("xml:space"), preserve());
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

    /** What was to be translated, and the translation of that. */
    void writePrevious(const ExchangeUnit& unit)
    {
        m_Writer.writeStartElement(QStringLiteral("alt-trans"));
        writeAttribute(QStringLiteral("alttranstype"), QStringLiteral("previous-version"));
        writeText(QStringLiteral("source"), unit.previousBaseText);
        writeText(QStringLiteral("target"), unit.text);
        m_Writer.writeEndElement();
    }

    void writeText(const QString& element, const QString& text)
    {
        m_Writer.writeTextElement(element, showControls(text));
    }

    QString m_Text; ///< in UTF-8, as what names no encoding is
    QXmlStreamWriter m_Writer;
};

class XliffReader
{
public:
    XliffReader(const QByteArray& bytes, ExchangeFile& file)
        : m_Reader(bytes)
        , m_File(file)
    {
    }

    std::optional<ExchangeFault> read()
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

private:
    Place place() const
    {
        return {static_cast<int>(m_Reader.lineNumber()),
                static_cast<int>(m_Reader.columnNumber()) + 1};
    }

    QString attribute(const char* name) const
    {
        return m_Reader.attributes().value(QLatin1String(name)).toString();
    }

    bool isAt(const char* element) const { return m_Reader.name() == QLatin1String(element); }

    void startElement()
    {
        if (isAt("file"))
            startFile();
        else if (isAt("group"))
            m_GroupTypes.append(attribute("restype"));
        else if (isAt("trans-unit"))
            readUnit();
        else if (m_IsFirst && !isAt("xliff"))
            m_Reader.raiseError(
                QStringLiteral("found <%1>, expected <xliff>").arg(m_Reader.name().toString()));
        m_IsFirst = false;
    }

    void startFile()
    {
        const QString base = attribute("source-language");
        const QString language = attribute("target-language");
        const bool isOther =
            m_HasFile && (base != m_File.baseLanguage || language != m_File.language);
        if (isOther)
            m_Reader.raiseError(QStringLiteral("texts of %1 and of %2 in one file. Divide it")
                                    .arg(m_File.language, language));
        m_File.baseLanguage = base;
        m_File.language = language;
        m_HasFile = true;
    }

    void readUnit()
    {
        ExchangeUnit unit;
        unit.place = place();
        const QString id = attribute("id");
        const bool hasShortMark = id.endsWith(shortMark());
        unit.isShort = hasShortMark || m_GroupTypes.contains(typeOfShortTexts());
        unit.url = urlOf(hasShortMark ? id.chopped(shortMark().size()) : id, attribute("resname"));
        unit.limit = attribute("maxwidth").toInt();
        m_UnknownInline.clear();
        while (m_Reader.readNextStartElement())
            readPart(unit);
        if (m_Reader.hasError())
            return;
        if (unit.state == State::Unknown)
            unit.state = unit.text.isEmpty() ? State::Missing : State::Translated;
        if (m_UnknownInline.isEmpty())
            m_File.units.append(unit);
        else
            m_File.unusable.append(
                {unit.place, QStringLiteral("%1: holds <%2>, which stands for something that is "
                                            "not in the file. Write it as text.")
                                 .arg(unit.url, m_UnknownInline)});
    }

    static QString urlOf(const QString& id, const QString& resname)
    {
        return hideControls(resname.isEmpty() ? QUrl::fromPercentEncoding(id.toUtf8()) : resname);
    }

    void readPart(ExchangeUnit& unit)
    {
        if (isAt("source")) {
            unit.baseText = readText();
        } else if (isAt("target")) {
            if (attribute("state").startsWith(QLatin1String("needs-review")))
                unit.state = State::Stale;
            unit.text = readText();
        } else if (isAt("note")) {
            unit.comment = readText();
        } else if (isAt("alt-trans")) {
            readPrevious(unit);
        } else {
            m_Reader.skipCurrentElement();
        }
    }

    /** Some tools move a text that is to be looked at again beside its old base text. */
    void readPrevious(ExchangeUnit& unit)
    {
        while (m_Reader.readNextStartElement()) {
            const bool isReviewed = attribute("state").startsWith(QLatin1String("needs-review"));
            const bool isSource = isAt("source");
            const bool isTarget = isAt("target");
            const QString text = readText();
            if (isSource)
                unit.previousBaseText = text;
            if (isTarget && isReviewed && unit.text.isEmpty()) {
                unit.text = text;
                unit.state = State::Stale;
            }
        }
    }

    /** The text of an element, also what stands in elements inside it. */
    QString readText()
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

    QXmlStreamReader m_Reader;
    ExchangeFile& m_File;
    QStringList m_GroupTypes; ///< of the groups around what is read
    QString m_UnknownInline;  ///< an element in the unit's texts that is no text
    bool m_IsFirst = true;
    bool m_HasFile = false;
};

} // namespace

QString XliffFormat::findRefusal(const QString& languageKey) const
{
    return tagOfLanguage(languageKey).isEmpty() ? explainMissingTag(languageKey) : QString();
}

QByteArray XliffFormat::write(const ExchangeFile& file) const
{
    return XliffWriter().write(file);
}

std::optional<ExchangeFault> XliffFormat::read(const QByteArray& bytes, ExchangeFile& file) const
{
    file = ExchangeFile();
    return XliffReader(bytes, file).read();
}
