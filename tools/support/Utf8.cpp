#include "Utf8.h"

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#else
#include <clocale>
#include <cstring>
#include <langinfo.h>
#include <QStringDecoder>
#endif

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

void useUtf8Everywhere()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

std::optional<QString> decodeUtf8(const QByteArray& bytes)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0)
        return std::nullopt;
    return text;
}

#else

// Qt 6 knows no other encoding, and says so on standard error where the locale has one.
void useUtf8Everywhere()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        qputenv("LC_ALL", "C.UTF-8");
}

std::optional<QString> decodeUtf8(const QByteArray& bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder.decode(bytes);
    return decoder.hasError() ? std::nullopt : std::optional<QString>(text);
}

#endif

QByteArray withoutByteOrderMark(const QByteArray& bytes)
{
    const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");
    return bytes.startsWith(byteOrderMark) ? bytes.mid(byteOrderMark.size()) : bytes;
}
