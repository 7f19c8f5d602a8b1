#include "MessageArgument.h"

#include "Icu.h"

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QTime>

namespace
{

bool setMoment(const QDateTime& moment, icu::Formattable& formattable)
{
    formattable.setDate(static_cast<UDate>(moment.toMSecsSinceEpoch()));
    return moment.isValid();
}

} // namespace

bool toFormattable(const QVariant& value, icu::Formattable& formattable)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::LongLong:
        formattable.setInt64(value.toLongLong());
        return true;
    case QMetaType::ULong:
    case QMetaType::ULongLong: {
        // Its own type does not reach as far; a number in decimals does.
        UErrorCode status = U_ZERO_ERROR;
        formattable.setDecimalNumber(QByteArray::number(value.toULongLong()).constData(), status);
        return U_SUCCESS(status) != 0;
    }
    case QMetaType::Float:
    case QMetaType::Double:
        formattable.setDouble(value.toDouble());
        return true;
    case QMetaType::QDateTime:
        return setMoment(value.toDateTime(), formattable);
    case QMetaType::QDate:
        return setMoment(value.toDate().startOfDay(), formattable);
    case QMetaType::QTime:
        // On a day on which no clock is changed.
        return setMoment(QDateTime(QDate(2000, 1, 1), value.toTime()), formattable) &&
               value.toTime().isValid();
    default:
        formattable.setString(Icu::view(value.toString()));
        return value.canConvert<QString>();
    }
}
