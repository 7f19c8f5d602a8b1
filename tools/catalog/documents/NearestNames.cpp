#include "NearestNames.h"

#include <QPair>
#include <QVector>

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace
{

/**
 * How many characters must be added, removed or changed to make one text of the other; where that
 * is more than @p most, just some number that is more. So far from its place, no character is
 * looked at.
 */
int editDistance(const QString& from, const QString& to, int most)
{
    const int tooFar = most + 1;
    const int width = static_cast<int>(to.size());
    QVector<int> costs(width + 1, tooFar);
    for (int column = 0; column <= std::min(most, width); ++column)
        costs[column] = column;
    for (int row = 1; row <= from.size(); ++row) {
        const int first = std::max(1, row - most);
        int diagonal = costs.at(first - 1);
        int cost = first == 1 ? std::min(row, tooFar) : tooFar;
        int least = costs[first - 1] = cost;
        for (int column = first; column <= std::min(row + most, width); ++column) {
            const int change = from.at(row - 1) == to.at(column - 1) ? diagonal : diagonal + 1;
            diagonal = costs.at(column);
            cost = std::min({change, diagonal + 1, cost + 1});
            costs[column] = cost;
            least = std::min(least, cost);
        }
        if (least > most)
            return tooFar;
    }
    return costs.last();
}

QString lastKey(const QString& url)
{
    return url.section(QLatin1Char('/'), -1);
}

/** What is near enough to have been meant by a name. */
class Wanted
{
public:
    explicit Wanted(const QString& name)
        : m_Name(name.toCaseFolded())
        , m_LastKey(lastKey(m_Name))
        , m_Farthest(std::max(std::min(2, static_cast<int>(name.size()) - 1),
                              std::min(static_cast<int>(name.size()) / 4, mostSlips)))
    {
    }

    /** How far the name is from @p candidate; nothing when that is too far. */
    std::optional<int> distanceTo(const QString& candidate) const
    {
        constexpr int otherPlaceInTheTree = 1;
        const QString name = candidate.toCaseFolded();
        const int whole = boundedDistance(m_Name, name);
        const int inOtherPlace = otherPlaceInTheTree + boundedDistance(m_LastKey, lastKey(name));
        const int distance = std::min(whole, inOtherPlace);
        return distance <= m_Farthest ? std::optional<int>(distance) : std::nullopt;
    }

private:
    /** The distance, or more than the farthest without counting it out: it is quadratic. */
    int boundedDistance(const QString& from, const QString& to) const
    {
        const int atLeast = static_cast<int>(std::abs(from.size() - to.size()));
        return atLeast > m_Farthest ? atLeast : editDistance(from, to, m_Farthest);
    }

    static constexpr int mostSlips = 8; // in one name, however long it is

    const QString m_Name;
    const QString m_LastKey;
    const int m_Farthest;
};

QStringList findNearestNames(const QString& name, const QStringList& names)
{
    constexpr int mostNames = 3;
    constexpr int longestName = 1000; // nobody mistyped one that is longer
    if (name.size() > longestName)
        return QStringList();
    const Wanted wanted(name);
    QVector<QPair<int, QString>> nearNames;
    for (const QString& candidate : names) {
        if (const auto distance = wanted.distanceTo(candidate))
            nearNames.append({*distance, candidate});
    }
    std::sort(nearNames.begin(), nearNames.end());

    QStringList nearest;
    for (const auto& nearName : nearNames.mid(0, mostNames))
        nearest.append(nearName.second);
    return nearest;
}

} // namespace

QString suggestNames(const QString& name, const QStringList& names)
{
    const QStringList nearest = findNearestNames(name, names);
    if (nearest.isEmpty() || nearest.contains(name))
        return QString();
    return QStringLiteral(" Did you mean %1?").arg(nearest.join(QStringLiteral(" or ")));
}

QString NameSuggestions::suggest(const QString& name)
{
    constexpr int mostSuggestions = 20;
    if (m_Count == mostSuggestions)
        return QString();
    ++m_Count;
    if (!m_Names)
        m_Names = m_ListNames();
    return suggestNames(name, *m_Names);
}
