#pragma once

#include "DBusReply.h"

#include <QObject>
#include <QSharedPointer>

/** A service that is never there. */
class ConfigurationFileHandlerDBusConnector : public QObject
{
public:
    static QSharedPointer<ConfigurationFileHandlerDBusConnector> createAndConnect(const QString&,
                                                                                  const QString&)
    {
        return nullptr;
    }
    DBusReply getConfigurationElementValue(const QString&, const QString&, const QString&) const
    {
        return DBusReply();
    }
    DBusReply getDynamicText(const QString&, const QString&, const QString&, const QString&) const
    {
        return DBusReply();
    }
};
