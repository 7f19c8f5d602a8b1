#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <optional>

/**
 * What a device has stored, kept in a JSON file:
 *
 *     {
 *         "configuration": { INSTANCE: { MODULE: { KEY: any value } } },
 *         "dynamicTexts": { INSTANCE: { URL: { KIND: { LANGUAGE: any value } } } },
 *         "statusDisplay": { "available": true, "folder": "short" }
 *     }
 *
 * Each of the three may be missing. `null` stands for an entry without a value.
 */
class DeviceFile
{
public:
    enum class Change { None, Stored, Failed };

    explicit DeviceFile(const QString& path);

    /**
     * Reads the file.
     *
     * @return what is wrong with it, with line and column where it is no JSON; empty when it is
     * sound. A file with a fault is never written.
     */
    QString load();

    /** The entry at @p keys, outermost first; nothing when there is none. */
    std::optional<QJsonValue> entry(const QStringList& keys) const;

    /** Sets the entry at @p keys and replaces the file, by a rename: it is never half written.
     * Failed: nothing has changed, see errorText(). */
    Change setEntry(const QStringList& keys, const QJsonValue& value);

    bool isStatusDisplayAvailable() const;
    QString statusDisplayFolder() const;

    /** Why the file could not be replaced the last time. */
    QString errorText() const { return m_StrErrorText; }

private:
    bool write(const QJsonObject& root);

    const QString m_StrPath;
    QJsonObject m_Root;
    QString m_StrErrorText;
};

/** Keys of a configuration element, and of a dynamic text, in the file. */
QStringList elementKeys(const QString& instance, const QString& key, const QString& module);
QStringList dynamicTextKeys(const QString& instance, const QString& urlIncludingIndex,
                            const QString& kind, const QString& language);
