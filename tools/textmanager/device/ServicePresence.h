#pragma once

#include <QDBusServiceWatcher>

/** Says, with a message, when the configuration service of the device goes or comes. */
class ServicePresence
{
public:
    ServicePresence();

private:
    QDBusServiceWatcher m_Watcher;
};
