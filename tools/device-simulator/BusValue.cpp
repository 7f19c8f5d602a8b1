#include "BusValue.h"

#include <QJsonArray>
#include <QJsonObject>

#include <cmath>
#include <limits>

namespace
{

// Levels as D-Bus counts them: each JSON array is an array of variants, each object a dictionary.
constexpr int mostLevels = 64;
constexpr int levelsOfVariant = 1;
constexpr int levelsOfList = 1 + levelsOfVariant;
constexpr int levelsOfMap = 2 + levelsOfVariant;

bool isText(const QString& text)
{
    return !text.contains(QChar::Null) && text.isValidUtf16();
}

QString findObstacle(const QJsonValue& value, int levels, const QString& where)
{
    if (value.isNull())
        return QStringLiteral("%1: null is no part of a value").arg(where);
    if (!isText(value.toString()))
        return QStringLiteral("%1: the bus carries no text with U+0000 or half a surrogate pair")
            .arg(where);
    if (levels > mostLevels)
        return QStringLiteral("%1: the bus carries no value of so many levels").arg(where);
    QString obstacle;
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end() && obstacle.isEmpty(); ++member) {
        const QString place = where + QLatin1Char('/') + member.key();
        obstacle = findObstacle(member.key(), levels, place); // a key is a text, too
        if (obstacle.isEmpty())
            obstacle = findObstacle(member.value(), levels + levelsOfMap, place);
    }
    const QJsonArray array = value.toArray();
    for (int index = 0; index < array.size() && obstacle.isEmpty(); ++index)
        obstacle = findObstacle(array.at(index), levels + levelsOfList,
                                QStringLiteral("%1[%2]").arg(where).arg(index));
    return obstacle;
}

} // namespace

QString findObstacleOnBus(const QJsonValue& value, const QString& where)
{
    return findObstacle(value, levelsOfVariant, where);
}

QJsonValue toJson(const QVariant& value)
{
    constexpr double firstRounded = 1LL << std::numeric_limits<double>::digits; // of the integers
    bool isKept = true;
    QJsonValue json;
    const auto take = [&isKept](const QVariant& part) {
        const QJsonValue member = toJson(part);
        isKept = isKept && !member.isUndefined();
        return member;
    };
    switch (value.userType()) {
    case QMetaType::Bool:
    case QMetaType::QString:
        json = QJsonValue::fromVariant(value);
        break;
    case QMetaType::Double:
        json = value.toDouble();
        isKept = std::isfinite(value.toDouble());
        break;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        json = value.toDouble();
        isKept = std::abs(value.toDouble()) < firstRounded;
        break;
    case QMetaType::QVariantList: {
        QJsonArray array;
        for (const QVariant& part : value.toList())
            array.append(take(part));
        json = array;
        break;
    }
    case QMetaType::QVariantMap: {
        QJsonObject object;
        const QVariantMap map = value.toMap();
        for (auto member = map.begin(); member != map.end(); ++member)
            object.insert(member.key(), take(member.value()));
        json = object;
        break;
    }
    default:
        isKept = false;
    }
    return isKept ? json : QJsonValue(QJsonValue::Undefined);
}
