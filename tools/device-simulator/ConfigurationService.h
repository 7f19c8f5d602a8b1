#pragma once

#include "DeviceFile.h"

#include <QDBusContext>
#include <QDBusVariant>
#include <QObject>
#include <QString>

/**
 * The configuration service of a simulated device: what Interface.Configuration.xml describes, and
 * Interface.DeviceSimulator.xml, over a file. The file must have been loaded and outlives the
 * service.
 */
class ConfigurationService : public QObject, protected QDBusContext
{
    Q_OBJECT

public:
    explicit ConfigurationService(DeviceFile& file);

    QDBusVariant getConfigurationElementValue(const QString& instance, const QString& key,
                                              const QString& module);
    QDBusVariant getDynamicText(const QString& instance, const QString& urlIncludingIndex,
                                const QString& kind, const QString& language);
    bool getStatusDisplay(QString& folder);

    void setConfigurationElementValue(const QString& instance, const QString& key,
                                      const QString& module, const QDBusVariant& value);
    void setDynamicText(const QString& instance, const QString& urlIncludingIndex,
                        const QString& kind, const QString& language, const QDBusVariant& text);

    void announceConfigurationChange(const QString& instance);
    void announceConfigurationDataChange();

Q_SIGNALS:
    void configurationChanged(const QString& instance);
    void configurationDataChanged();
    /** Nobody can ask any more. Not on the bus. */
    void busLost();

private:
    QDBusVariant answer(const QStringList& keys);
    /** @return whether the entry is now another one. */
    bool store(const QStringList& keys, const QDBusVariant& value);

    DeviceFile& m_File;
};
