#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

/**
 * " Did you mean A or B?" with the names most like @p name, the nearest first, three at most; empty
 * when none is near enough to have been meant, or when it is itself one of them.
 *
 * Upper and lower case count as alike. For text URLs a like last key counts as near, too: Save is
 * near to Menu/Save.
 */
QString suggestNames(const QString& name, const QStringList& names);

/**
 * Suggestions for one name after the other, of which there may be very many. Then they are not
 * misspelt, and to look for what is near to each would take its time: the first ones get some.
 */
class NameSuggestions
{
public:
    /** @param names lists what may have been meant; it is asked once, when that is needed. */
    explicit NameSuggestions(const std::function<QStringList()>& names)
        : m_ListNames(names)
    {
    }

    /** As suggestNames(), for the first 20 names; empty from then on. */
    QString suggest(const QString& name);

private:
    std::function<QStringList()> m_ListNames;
    std::optional<QStringList> m_Names;
    int m_Count = 0;
};
