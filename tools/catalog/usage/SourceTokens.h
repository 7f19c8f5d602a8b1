#pragma once

#include "Finding.h"

#include <QString>
#include <QVector>

/** What a source is written in. */
enum class SourceLanguage { Cpp, Qml, Json };

/** One word, literal or sign of a source; comments and blanks are none. */
struct SourceToken {
    enum class Kind { Identifier, String, Number, Sign };

    Kind kind = Kind::Sign;
    QString text; ///< of a string, its value: without quotation marks and escapes
    Place place;
    bool isOpen = false; ///< of a string: whether something is put behind its text at run time

    bool isIdentifier(const char* name) const
    {
        return kind == Kind::Identifier && text == QLatin1String(name);
    }
    bool isSign(const char* sign) const
    {
        return kind == Kind::Sign && text == QLatin1String(sign);
    }
};

/**
 * The tokens of a source, as far as calls and literals can be found in them: "::" is one sign, any
 * other sign is one character. Nothing is refused; an unclosed literal ends with its line, or with
 * the source where it may hold several lines.
 */
QVector<SourceToken> tokensOf(const QString& source, SourceLanguage language);
