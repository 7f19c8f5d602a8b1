#include "RepeatedKey.h"

#include <QSet>
#include <QStringList>
#include <QVector>

#include <nlohmann/json.hpp>

namespace
{

/** Follows a parser through a text. */
class KeyWatch
{
public:
    void enterObject() { m_Levels.append(Level()); }
    void leaveObject() { m_Levels.removeLast(); }

    void meet(const QString& key)
    {
        Level& level = m_Levels.last();
        level.key = key;
        if (level.keys.contains(key) && m_StrRepeated.isEmpty())
            m_StrRepeated = path();
        level.keys.insert(key);
    }

    const QString& repeated() const { return m_StrRepeated; }

private:
    struct Level {
        QSet<QString> keys;
        QString key;
    };

    QString path() const
    {
        QStringList keys;
        for (const Level& level : m_Levels)
            keys.append(level.key.isEmpty() ? QStringLiteral("\"\"") : level.key);
        return keys.join(QLatin1Char('/'));
    }

    QVector<Level> m_Levels;
    QString m_StrRepeated;
};

} // namespace

std::optional<QString> findRepeatedKey(const QByteArray& json)
{
    using Event = nlohmann::json::parse_event_t;
    KeyWatch watch;
    const auto follow = [&watch](int, Event event, nlohmann::json& value) {
        if (event == Event::object_start)
            watch.enterObject();
        else if (event == Event::object_end)
            watch.leaveObject();
        else if (event == Event::key)
            watch.meet(QString::fromStdString(value.get_ref<const std::string&>()));
        return true;
    };
    constexpr bool mayThrow = false;
    const auto parsed = nlohmann::json::parse(json.cbegin(), json.cend(), follow, mayThrow);
    if (parsed.is_discarded())
        return std::nullopt;
    return watch.repeated();
}
