#include "Placeholders.h"

#include <QLocale>
#include <QRegularExpression>

namespace
{

QString shown(const QVariant& value, const QLocale& locale)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return locale.toString(value.toLongLong());
    case QMetaType::ULongLong:
        return locale.toString(value.toULongLong());
    case QMetaType::Float:
    case QMetaType::Double:
        return locale.toString(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    default:
        return value.toString();
    }
}

} // namespace

QString Placeholders::findOtherName(const QVariantMap& arguments)
{
    static const QRegularExpression number(QStringLiteral("^[1-9][0-9]?$"));
    for (auto argument = arguments.cbegin(); argument != arguments.cend(); ++argument) {
        if (!number.match(argument.key()).hasMatch())
            return argument.key().isNull() ? QString(QLatin1String("")) : argument.key();
    }
    return QString();
}

QString Placeholders::replace(const QString& text, const QVariantMap& arguments,
                              const QLocale& locale)
{
    static const QRegularExpression placeholder(QStringLiteral("%([1-9][0-9]?)"));
    QString result;
    QString::size_type end = 0;
    auto places = placeholder.globalMatch(text);
    while (places.hasNext()) {
        const QRegularExpressionMatch place = places.next();
        const auto argument = arguments.constFind(place.captured(1));
        if (argument == arguments.constEnd())
            continue;
        result += text.mid(end, place.capturedStart() - end) + shown(*argument, locale);
        end = place.capturedEnd();
    }
    return result + text.mid(end);
}
