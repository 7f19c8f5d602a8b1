#pragma once

#include "MarkupTags.h"
#include "Placeholders.h"
#include "TextKey.h"

#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

/**
 * What a translation takes over as it is: addresses of pages and of mail, and numbers.
 *
 * A number is the same in digits of another script and with other marks: 2,5 is 2.5, and 1.000 is
 * 1,000 and 1 000. Where it can be read in two ways, one of them has to fit. Digits behind a letter
 * ("CO2", "F1"), ordinals ("2nd") and raised or lowered digits ("m³") belong to a word, which a
 * translation may well write in another way.
 */
class TextData
{
public:
    TextData(const QString& text, const Placeholders& placeholders, const MarkupTags& tags);

    /** What of @p base is not here, as the base writes it. */
    QStringList findMissing(const TextData& base) const;

private:
    /** A row of digits with marks between them. */
    struct Number {
        QString written;
        QStringList readings; ///< what it may be as one number
        QStringList parts;    ///< what it is as several numbers; empty when it is one in any case
        bool isPartOfWord = false;
    };
    class NumberReader;

    void findAddresses(const QString& text);
    void findNumbers(const QString& text, const Placeholders& placeholders, const MarkupTags& tags);
    bool isInAddress(QString::size_type offset) const;
    bool hasNumber(const Number& number) const;

    struct Address {
        QString written;
        QString::size_type offset = 0;
    };
    QVector<Address> m_Addresses;
    QVector<Number> m_Numbers;
    QSet<TextKey> m_Readings; ///< all that the numbers may be
};
