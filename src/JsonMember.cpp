#include "JsonMember_p.h"

#include <random>

namespace
{

QJsonObject builtAnew(const QJsonObject& object)
{
    QJsonObject copy;
    for (auto member = object.constBegin(); member != object.constEnd(); ++member)
        copy.insert(member.key(), member.value());
    return copy;
}

/** Decides by chance whether @p object is built anew before its member @p replaced is replaced. */
bool isToBeBuiltAnew(const QJsonObject& object, const QJsonValue& replaced)
{
    if (!replaced.isString()) // nothing is kept of what is no string
        return false;
    constexpr int longText = 1024;
    const int weight = 1 + replaced.toString().size() / longText;
    thread_local std::minstd_rand random;
    return std::uniform_int_distribution<>(0, object.size() - 1)(random) < weight;
}

} // namespace

void setMember(QJsonObject& object, QStringView key, const QJsonValue& value)
{
    if (isToBeBuiltAnew(object, object.value(key)))
        object = builtAnew(object);
    object.insert(key, value);
}
