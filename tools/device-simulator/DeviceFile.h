#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>
#include <QVariant>

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
     * @return what is wrong with it, with line and column where it is no JSON, and what to do;
     * empty when it is sound. A key that stands twice in an object is a fault. A file with a fault
     * is never written.
     */
    QString load();

    /** The entry at @p keys, outermost first; nothing when there is none. */
    std::optional<QJsonValue> entry(const QStringList& keys) const;

    /**
     * Sets the entry at @p keys and replaces the file, by a rename: it is never half written.
     *
     * @param value of Qt's own types. JSON tells neither kinds of numbers apart, nor maps by the
     * type of their keys; what it does not keep at all is refused: NaN, infinity, integers of more
     * than 53 bits.
     * @return Failed: nothing has changed, see errorText(); so also when the file is no longer what
     * was read or written last.
     */
    Change setEntry(const QStringList& keys, const QVariant& value);

    bool isStatusDisplayAvailable() const;
    QString statusDisplayFolder() const;

    /** Why the entry could not be set the last time. */
    QString errorText() const { return m_StrErrorText; }

private:
    bool write(const QJsonObject& root);

    const QString m_StrPath;
    QByteArray m_Bytes; ///< of the file, as they were read or written last
    QJsonObject m_Root;
    QString m_StrErrorText;
};

/** Keys of a configuration element, and of a dynamic text, in the file. */
QStringList elementKeys(const QString& instance, const QString& key, const QString& module);
QStringList dynamicTextKeys(const QString& instance, const QString& urlIncludingIndex,
                            const QString& kind, const QString& language);
