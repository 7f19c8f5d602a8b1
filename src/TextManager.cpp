#include "TextManager.h"

#include "LanguageDefinitions.h"
#include "TextManagerDefinitions.h"

#include "ConfigurationFileHandlerDBusConnector.h"
#include "DBusReply.h"
#include "DeviceManagerDefinitions.h"
#include "DeviceManifestManager.h"
#include "SystemInformationManagerDefinitions.h"

#include <QDebug>
#include <QMutexLocker>
#include <QVariant>

const QString TextManager::sm_StrModulenameDeviceManager = QStringLiteral("DeviceManager");
const QString TextManager::sm_StrInstancenameDeviceSettings =
    QStringLiteral("DeviceSettings/DeviceSettings");

TextManager::TextManager(const QString& languagePath, const QString& languageName)
    : TextManagerBase(languagePath, LanguageDefinitions::getFirstFallbackLanguageFilename(),
                      getSmallFolder())
    , m_SpConfigurationConnector(ConfigurationFileHandlerDBusConnector::createAndConnect(
          sm_StrModulenameDeviceManager,
          SystemInformationManagerDefinitions::getObjectNameConfiguration()))
{
    m_StrLanguageName = languageName.isEmpty() ? retrieveLanguageName() : languageName;

    if (m_SpConfigurationConnector.isNull()) {
        qWarning() << "Invalid pointer to connector!";
        return;
    }
    connect(m_SpConfigurationConnector.data(), SIGNAL(configurationChanged(QString)), this,
            SLOT(deviceManagerConfigurationChanged(QString)));
    connect(m_SpConfigurationConnector.data(), SIGNAL(configurationDataChanged()), this,
            SLOT(configurationChanged()));
}

TextManager::~TextManager() = default;

QString TextManager::retrieveLanguageName()
{
    const QMutexLocker locker(&m_Mutex);
    if (m_SpConfigurationConnector.isNull()) {
        qWarning() << "Invalid pointer to connector!";
        return QString();
    }

    const DBusReply reply = m_SpConfigurationConnector->getConfigurationElementValue(
        sm_StrInstancenameDeviceSettings, LanguageDefinitions::getJsonLanguageKey(),
        TextManagerDefinitions::getModuleName());
    if (reply.isError()) {
        qWarning() << "Received error on reading configuration setting for language:"
                   << reply.getErrorMessage();
        return QString();
    }

    const QVariant value = reply.getValue();
    if (!value.canConvert<QString>()) {
        qWarning() << "Error on converting language name to string:" << value << "!";
        return QString();
    }
    return extractLanguageFromTextUrl(value.toString());
}

QString TextManager::getSmallFolder()
{
    DeviceManifestManager manifest;
    return manifest.isStatusDisplayAvailable() ? manifest.getStatusDisplayFolder() : QString();
}

void TextManager::configurationChanged()
{
    deviceManagerConfigurationChanged(DeviceManagerDefinitions::getInstanceNameDeviceSettings());
}

void TextManager::deviceManagerConfigurationChanged(const QString& strInstanceName)
{
    if (strInstanceName != DeviceManagerDefinitions::getInstanceNameDeviceSettings())
        return;
    m_StrLanguageName = retrieveLanguageName();
    reloadLanguage();
}
