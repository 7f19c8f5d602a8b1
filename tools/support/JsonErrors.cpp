#include "JsonErrors_p.h"

#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>

#include <QChar>
#include <QVector>

#include <algorithm>

namespace
{

struct Nowhere {
    using Ch = char;
    void Put(Ch) {}
};

/** The character at @p offset, as a person sees it. */
QString shownCharacter(const QByteArray& bytes, int offset)
{
    if (offset >= bytes.size())
        return QStringLiteral("the end of the text");
    constexpr int longestCharacter = 4; // in UTF-8
    const QString text = QString::fromUtf8(bytes.mid(offset, longestCharacter));
    const QVector<uint> characters = text.toUcs4();
    const char32_t character = characters.value(0);
    if (QChar::isPrint(character))
        return QStringLiteral("'%1'").arg(QString::fromUcs4(&character, 1));
    const QString code =
        QStringLiteral("%1").arg(static_cast<uint>(character), 4, 16, QLatin1Char('0')).toUpper();
    return QStringLiteral("the character U+") + code;
}

/** What may stand where the parser found something else. */
QString expectedBy(rapidjson::ParseErrorCode code)
{
    switch (code) {
    case rapidjson::kParseErrorDocumentEmpty:
        return QStringLiteral("'{'");
    case rapidjson::kParseErrorDocumentRootNotSingular:
        return QStringLiteral("nothing more");
    case rapidjson::kParseErrorObjectMissName:
        return QStringLiteral("a key in quotation marks");
    case rapidjson::kParseErrorObjectMissColon:
        return QStringLiteral("':' behind the key");
    case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket:
        return QStringLiteral("',' or '}'");
    case rapidjson::kParseErrorArrayMissCommaOrSquareBracket:
        return QStringLiteral("',' or ']'");
    case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex:
        return QStringLiteral("four hexadecimal digits behind it");
    case rapidjson::kParseErrorStringUnicodeSurrogateInvalid:
        return QStringLiteral("both halves of a surrogate pair");
    case rapidjson::kParseErrorStringEscapeInvalid:
        return QStringLiteral("an escape that JSON knows; a backslash itself is written twice");
    case rapidjson::kParseErrorStringMissQuotationMark:
        return QStringLiteral("a quotation mark at the end of the string");
    case rapidjson::kParseErrorStringInvalidEncoding: // so it calls raw control characters
        return QStringLiteral("an escape in its place, as \\n for a line break and \\t for a tab");
    case rapidjson::kParseErrorNumberMissFraction:
    case rapidjson::kParseErrorNumberMissExponent:
        return QStringLiteral("a digit");
    default:
        return QStringLiteral("a value");
    }
}

} // namespace

int findNoUtf8(const QByteArray& bytes)
{
    Nowhere nowhere;
    const char* at = bytes.begin();
    const auto isBeyondAscii = [](char byte) { return static_cast<uchar>(byte) >= 0x80; };
    while ((at = std::find_if(at, bytes.end(), isBeyondAscii)) != bytes.end()) {
        rapidjson::MemoryStream stream(at, static_cast<std::size_t>(bytes.end() - at));
        if (!rapidjson::UTF8<>::Validate(stream, nowhere))
            break;
        at += stream.Tell();
    }
    return static_cast<int>(at - bytes.begin());
}

JsonFault describeJsonError(const QByteArray& bytes, rapidjson::ParseErrorCode code, int offset)
{
    const auto faultAt = [&](int where, const QString& reason, bool isEncodingFault) {
        const Place place = PlaceIndex().placeOf(bytes, where);
        return JsonFault{place.line, place.column, reason, isEncodingFault};
    };
    const int noUtf8 = findNoUtf8(bytes);
    if (noUtf8 < bytes.size() && noUtf8 <= offset)
        return faultAt(noUtf8,
                       QStringLiteral("not encoded in UTF-8: found the byte 0x%1")
                           .arg(static_cast<uchar>(bytes.at(noUtf8)), 2, 16, QLatin1Char('0')),
                       true);
    if (code == rapidjson::kParseErrorNumberTooBig)
        return faultAt(offset, QStringLiteral("malformed JSON: found a number out of range"),
                       false);
    return faultAt(offset,
                   QStringLiteral("malformed JSON: found ") + shownCharacter(bytes, offset) +
                       QStringLiteral(", expected ") + expectedBy(code),
                   false);
}
