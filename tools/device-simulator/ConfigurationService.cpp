#include "ConfigurationService.h"

#include "DeviceBus.h"
#include "PlainValue.h"

ConfigurationService::ConfigurationService(DeviceFile& file)
    : m_File(file)
{
}

QDBusVariant ConfigurationService::getConfigurationElementValue(const QString& instance,
                                                                const QString& key,
                                                                const QString& module)
{
    return answer(elementKeys(instance, key, module));
}

QDBusVariant ConfigurationService::getDynamicText(const QString& instance,
                                                  const QString& urlIncludingIndex,
                                                  const QString& kind, const QString& language)
{
    return answer(dynamicTextKeys(instance, urlIncludingIndex, kind, language));
}

bool ConfigurationService::getStatusDisplay(QString& folder)
{
    folder = m_File.statusDisplayFolder();
    return m_File.isStatusDisplayAvailable();
}

void ConfigurationService::setConfigurationElementValue(const QString& instance, const QString& key,
                                                        const QString& module,
                                                        const QDBusVariant& value)
{
    if (store(elementKeys(instance, key, module), value))
        Q_EMIT configurationChanged(instance);
}

void ConfigurationService::setDynamicText(const QString& instance, const QString& urlIncludingIndex,
                                          const QString& kind, const QString& language,
                                          const QDBusVariant& text)
{
    if (store(dynamicTextKeys(instance, urlIncludingIndex, kind, language), text))
        Q_EMIT configurationDataChanged();
}

void ConfigurationService::announceConfigurationChange(const QString& instance)
{
    Q_EMIT configurationChanged(instance);
}

void ConfigurationService::announceConfigurationDataChange()
{
    Q_EMIT configurationDataChanged();
}

QDBusVariant ConfigurationService::answer(const QStringList& keys)
{
    const auto value = m_File.entry(keys);
    if (!value) {
        sendErrorReply(
            DeviceBus::interfaceName() + QStringLiteral(".Error.UnknownEntry"),
            QStringLiteral("There is no entry %1").arg(keys.join(QStringLiteral(" > "))));
        return QDBusVariant();
    }
    // The bus knows no null.
    return QDBusVariant(value->isNull() ? QVariantList() : value->toVariant());
}

bool ConfigurationService::store(const QStringList& keys, const QDBusVariant& value)
{
    const DeviceFile::Change change = m_File.setEntry(keys, toPlainValue(value.variant()));
    if (change == DeviceFile::Change::Failed)
        sendErrorReply(DeviceBus::interfaceName() + QStringLiteral(".Error.NotStored"),
                       m_File.errorText());
    return change == DeviceFile::Change::Stored;
}
