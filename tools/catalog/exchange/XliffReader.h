#pragma once

#include "ExchangeFile.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QXmlStreamReader>

#include <optional>

/** Reads an XLIFF 1.2 file unit by unit, and refuses document types and entities of its own. */
class XliffReader
{
public:
    /** @param file receives what is read, and must outlive this object. */
    XliffReader(const QByteArray& bytes, ExchangeFile& file);

    std::optional<ExchangeFault> read();

private:
    Place place() const;
    QString attribute(const char* name) const;
    bool isAt(const char* element) const;

    void startElement();
    void startDocument();
    void startFile();
    void readUnit();
    void readPart(ExchangeUnit& unit);
    void readTarget(ExchangeUnit& unit);
    void readPrevious(ExchangeUnit& unit);
    QString readText();
    QString readUnitText();

    QXmlStreamReader m_Reader;
    ExchangeFile& m_File;
    QStringList m_GroupTypes; ///< of the groups around what is read
    QString m_UnknownInline;  ///< an element in the unit's texts that is no text
    QString m_Approved;       ///< what the unit says of its text
    bool m_IsFirst = true;
    bool m_HasFile = false;
};
