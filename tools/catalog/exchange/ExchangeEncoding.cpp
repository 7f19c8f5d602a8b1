#include "ExchangeEncoding.h"

#include "Utf8.h"

std::optional<QString> decodeUtf(const QByteArray& bytes)
{
    if (!bytes.startsWith("\xFF\xFE") && !bytes.startsWith("\xFE\xFF"))
        return decodeUtf8(withoutByteOrderMark(bytes));
    constexpr auto unit = static_cast<int>(sizeof(char16_t));
    if (bytes.size() % unit != 0)
        return std::nullopt;
    return QString::fromUtf16(reinterpret_cast<const char16_t*>(bytes.constData()),
                              bytes.size() / unit);
}
