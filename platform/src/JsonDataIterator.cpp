#include "JsonDataIterator.h"

#include "JsonDataIteratorObjectBase.h"

#include <QJsonArray>
#include <QJsonObject>

#include <utility>
#include <vector>

namespace
{

/** @p value is null afterwards: while two share a container, a change to one copies it. */
template<typename Value>
QJsonValue takeOut(Value&& value)
{
    const QJsonValue taken = value;
    value = QJsonValue();
    return taken;
}

/** An object or array on the way from the top to where the walk is. */
class Level
{
public:
    explicit Level(QJsonValue container)
        : m_IsObject(container.isObject())
    {
        if (m_IsObject)
            m_Object = std::exchange(container, QJsonValue()).toObject();
        else
            m_Array = std::exchange(container, QJsonValue()).toArray();
    }

    QJsonObject* object() { return m_IsObject ? &m_Object : nullptr; }

    /** Goes on to the next member that is a container. @return whether there is one. */
    bool goOn()
    {
        const int size = m_IsObject ? m_Object.size() : m_Array.size();
        while (++m_Index < size) {
            const QJsonValue::Type type = member().type();
            if (type == QJsonValue::Object || type == QJsonValue::Array)
                return true;
        }
        return false;
    }

    /** The member that the walk is at. */
    QJsonValueRef member()
    {
        return m_IsObject ? (m_Object.begin() + m_Index).value() : m_Array[m_Index];
    }

    /** The first member, whatever it is. */
    QJsonValue first() const { return m_IsObject ? m_Object.begin().value() : m_Array.first(); }

    QJsonValue toValue() const { return m_IsObject ? QJsonValue(m_Object) : QJsonValue(m_Array); }

private:
    const bool m_IsObject;
    QJsonObject m_Object;
    QJsonArray m_Array;
    int m_Index = -1;
};

} // namespace

QJsonValue JsonDataIterator::iterate(QJsonValue& data, JsonDataIteratorObjectBase& object)
{
    QJsonValue value;
    // Levels in place of recursion, whose depth would be that of the data. Below the data there is
    // one that holds nothing else, so that the data themselves are a member as well.
    std::vector<Level> levels;
    levels.emplace_back(QJsonArray{takeOut(data)});
    while (true) {
        if (levels.back().goOn()) {
            levels.emplace_back(takeOut(levels.back().member()));
            if (QJsonObject* entered = levels.back().object())
                object.compute(*entered, value);
        } else if (levels.size() > 1) {
            const QJsonValue left = levels.back().toValue();
            levels.pop_back();
            levels.back().member() = left;
        } else {
            break;
        }
    }
    data = levels.front().first();
    return value;
}
