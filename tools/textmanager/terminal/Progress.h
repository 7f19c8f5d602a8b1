#pragma once

#include "Console.h"

#include <QElapsedTimer>
#include <QString>

/** Tells on a terminal how far something has come that takes long. */
class Progress
{
public:
    /** @param doing what is going on, such as "checking". */
    explicit Progress(const QString& doing);
    ~Progress() { clear(); }
    Q_DISABLE_COPY_MOVE(Progress)

    void show(QString::size_type done, QString::size_type all);
    /** Leaves the line as if nothing had been shown. */
    void clear();

private:
    const QString m_StrDoing;
    const bool m_IsWanted;
    bool m_IsShown = false;
    QElapsedTimer m_Timer; ///< since the beginning, or what was shown last
};

/**
 * Does something with each item, and tells how far it has come.
 * @param handle tells what is wrong with an item, which ends it, or nothing.
 * @return whether all were handled; a message says why not.
 */
template<typename Items, typename Handle>
bool handleAll(const QString& doing, const Items& items, const Handle& handle)
{
    Progress progress(doing);
    decltype(items.size()) done = 0;
    for (const auto& item : items) {
        progress.show(done++, items.size());
        const QString fault = handle(item);
        if (fault.isEmpty())
            continue;
        progress.clear();
        printMessage(fault);
        return false;
    }
    return true;
}
