#pragma once

#include <QString>

/** Shows on a terminal how far long work has come: one line, which goes when the work is done. */
class Progress
{
public:
    /** @param work what is being done, as in "packing". */
    Progress(const QString& work, int steps);
    ~Progress();
    Q_DISABLE_COPY_MOVE(Progress)

    /** Begins the next step. */
    void step(const QString& name);

private:
    const QString m_StrWork;
    const int m_Steps;
    const bool m_IsShown;
    int m_Step = 0;
};
