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

/** Decides by chance whether @p object is built anew after its member @p value was replaced. */
bool isToBeBuiltAnew(const QJsonObject& object, const QJsonValue& value)
{
    if (!value.isString()) // nothing is kept of what is no string
        return false;
    constexpr QString::size_type longText = 1024;
    const auto weight = 1 + value.toString().size() / longText;
    thread_local std::minstd_rand random;
    return std::uniform_int_distribution<QString::size_type>(0, object.size() - 1)(random) < weight;
}

} // namespace

void setMember(QJsonObject& object, QStringView key, const QJsonValue& value)
{
    const auto sizeBefore = object.size();
    object.insert(key, value);
    const bool wasReplaced = object.size() == sizeBefore;
    if (wasReplaced && isToBeBuiltAnew(object, value))
        object = builtAnew(object);
}
