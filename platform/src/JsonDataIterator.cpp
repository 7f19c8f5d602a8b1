#include "JsonDataIterator.h"

#include "JsonDataIteratorObjectBase.h"

#include <QJsonArray>
#include <QJsonObject>

#include <utility>
#include <vector>

namespace
{

/** An object or array on the way from the top to where the walk is. */
class Level
{
public:
    explicit Level(const QJsonValue& container)
        : m_IsObject(container.isObject())
        , m_Object(container.toObject())
        , m_Array(container.toArray())
    {
    }

    QJsonObject* object() { return m_IsObject ? &m_Object : nullptr; }
    QJsonValue toValue() const { return m_IsObject ? QJsonValue(m_Object) : QJsonValue(m_Array); }

    /** Takes out the next member that is a container and leaves null there: while two share a
     * container, a change to it copies it. Undefined when there is no such member any more. */
    QJsonValue takeNext()
    {
        const auto size = m_IsObject ? m_Object.size() : m_Array.size();
        while (++m_Index < size) {
            QJsonValue member = memberAt(m_Index);
            if (member.isObject() || member.isArray()) {
                putBack(QJsonValue());
                return member;
            }
        }
        return QJsonValue::Undefined;
    }

    /** Puts @p member where takeNext() took one out. */
    void putBack(const QJsonValue& member)
    {
        if (m_IsObject)
            (m_Object.begin() + m_Index).value() = member;
        else
            m_Array[m_Index] = member;
    }

    QJsonValue memberAt(int index) const
    {
        return m_IsObject ? (m_Object.begin() + index).value() : m_Array.at(index);
    }

private:
    bool m_IsObject;
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
    levels.emplace_back(QJsonArray{std::exchange(data, QJsonValue())});
    while (true) {
        QJsonValue next = levels.back().takeNext();
        if (!next.isUndefined()) {
            levels.emplace_back(std::exchange(next, QJsonValue()));
            if (QJsonObject* entered = levels.back().object())
                object.compute(*entered, value);
        } else if (levels.size() > 1) {
            next = levels.back().toValue();
            levels.pop_back();
            levels.back().putBack(next);
        } else {
            break;
        }
    }
    data = levels.front().memberAt(0);
    return value;
}
