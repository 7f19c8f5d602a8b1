#include "NearestNames.h"

#include <QPair>
#include <QVector>

#include <algorithm>

namespace
{

/** How many characters must be added, removed or changed to make one text of the other. */
int editDistance(const QString& from, const QString& to)
{
    QVector<int> costs(to.size() + 1);
    for (int column = 0; column <= to.size(); ++column)
        costs[column] = column;
    for (int row = 1; row <= from.size(); ++row) {
        int diagonal = costs.at(0);
        costs[0] = row;
        for (int column = 1; column <= to.size(); ++column) {
            const int change = from.at(row - 1) == to.at(column - 1) ? diagonal : diagonal + 1;
            diagonal = costs.at(column);
            costs[column] = std::min({change, diagonal + 1, costs.at(column - 1) + 1});
        }
    }
    return costs.last();
}

QString lastKey(const QString& url)
{
    return url.section(QLatin1Char('/'), -1);
}

int distanceOfNames(const QString& wanted, const QString& candidate)
{
    constexpr int otherPlaceInTheTree = 1;
    const QString from = wanted.toCaseFolded();
    const QString to = candidate.toCaseFolded();
    return std::min(editDistance(from, to),
                    otherPlaceInTheTree + editDistance(lastKey(from), lastKey(to)));
}

QStringList findNearestNames(const QString& name, const QStringList& names)
{
    constexpr int mostNames = 3;
    const int farthest = std::max(std::min(2, name.size() - 1), name.size() / 4);

    QVector<QPair<int, QString>> nearNames;
    for (const QString& candidate : names) {
        const int distance = distanceOfNames(name, candidate);
        if (distance <= farthest)
            nearNames.append({distance, candidate});
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
