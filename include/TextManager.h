#pragma once

#include "TextManagerBase.h"
#include "TextManagerLibraryExport.h"

#include <QSharedPointer>
#include <QString>

class ConfigurationFileHandlerDBusConnector;

/**
 * The text manager that applications on the device normally use: its language is that of the
 * device's settings, and every change of the settings reloads the texts and is announced by
 * languageReloaded(). Look-ups are those of TextManagerBase. Its short texts are those of the
 * status display, when the device has one.
 *
 * Where the platform gives no client of the configuration service, the object is as usable as any
 * TextManagerBase, only it never follows a change. The reference platform gives one whenever the
 * device's bus is there, also before the service is: its coming counts as a change.
 *
 * **Threads.** Slots run in the thread of this object, which needs an event loop to hear of
 * changes. The mutex is held while the service is asked, so that look-ups of other threads wait for
 * its answer, for as long at the most as the platform waits. Deliberately, the name of the current
 * language is then replaced outside the mutex: a thread that looks up texts while the settings may
 * change passes its language key instead of leaving it empty.
 *
 * **Ownership.** The object shares its client of the service and drops its share when destroyed. It
 * has no QObject parent.
 */
class TEXTMANAGERLIBRARY_EXPORT TextManager : public TextManagerBase
{
    Q_OBJECT

public:
    /**
     * Loads every language file of @p languagePath, as TextManagerBase does, and the short texts of
     * its sub-folder getSmallFolder(); connects to the configuration service; chooses the language.
     * Nothing is emitted.
     *
     * That there is no client is a warning: "Invalid pointer to connector!". With an empty
     * @p languageName it comes twice, once for the language that could not be read. A service that
     * is not there yet is one warning, for that language alone, which is then empty.
     *
     * @param languagePath the language folder, with a trailing "/". Empty: nothing is loaded before
     * the first reloadLanguage().
     * @param languageName key of the language until the settings change; the service is then not
     * asked for it. Empty: the language of the settings, see retrieveLanguageName().
     */
    TextManager(const QString& languagePath, const QString& languageName);
    ~TextManager() override;

    /**
     * Asks the configuration service for the device's language: what follows the last "/" of the
     * configured value. Takes the lock and blocks until the service has answered. The current
     * language stays as it is.
     *
     * @return the language key; empty, deliberately with no default in its place, after a warning
     * that says why it could not be read.
     */
    QString retrieveLanguageName();

    /**
     * The name of the status display's folder, relative to the language folder; empty when the
     * device has no status display. Static, since it is needed before the base exists.
     */
    static QString getSmallFolder();

public Q_SLOTS:
    /** Reads the language of the settings again and reloads, whatever has changed. */
    void configurationChanged();

private Q_SLOTS:
    /**
     * Reads the language again and reloads when the device's settings are what changed. That is
     * done also when the language is the same or could not be read and is now empty.
     */
    void deviceManagerConfigurationChanged(const QString& strInstanceName);

private:
    static const QString sm_StrModulenameDeviceManager;
    static const QString sm_StrInstancenameDeviceSettings;

    QSharedPointer<ConfigurationFileHandlerDBusConnector> m_SpConfigurationConnector; ///< or null
};
