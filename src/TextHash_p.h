#pragma once

#include <QString>

/**
 * A hash of texts that strangers write. Qt's own is one with which keys that collide can be made
 * up, whatever its seed: a table of them would be walked from one end to the other for each.
 */
class TextHash
{
public:
    /** With a secret of its own. */
    TextHash();

    quint64 operator()(const QString& text) const { return ofText(text, m_Secret); }
    /** The hash of two texts, in this order. */
    quint64 operator()(const QString& first, const QString& second) const
    {
        return ofText(second, ofText(first, m_Secret));
    }

private:
    static quint64 ofText(const QString& text, quint64 seed);

    quint64 m_Secret;
};
