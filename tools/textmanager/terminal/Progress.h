#pragma once

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
