#pragma once

#include "ReferencePlatformExport.h"

#include <QString>

/**
 * Parses a selector URL, which names a text that a configuration service supplies:
 *
 *     MODULE:OBJECT:INSTANCE:PATH
 *     MODULE:OBJECT:INSTANCE:PATH[INDEX]
 *
 * as in `DeviceManager:Configuration:DeviceSettings/DeviceSettings:Modes/Operation[2]`. MODULE and
 * OBJECT are letters, digits and "_", and do not start with a digit. INSTANCE and PATH are parts
 * joined by "/", none of them empty, of any characters but ":", "[" and "]". INDEX is a decimal
 * number.
 */
class REFERENCEPLATFORM_EXPORT SelectorUrlHandler
{
public:
    /** Parses @p url. Nothing is logged when it cannot be parsed: see isValid(). */
    explicit SelectorUrlHandler(const QString& url);
    virtual ~SelectorUrlHandler();

    /** Whether the URL could be parsed. If not, all its parts are empty. */
    bool isValid() const;
    /** MODULE: whose configuration service has the text. */
    QString getModuleName() const;
    /** OBJECT: where the module answers. */
    QString getObjectName() const;
    /** INSTANCE: which of the object's instances the text belongs to. */
    QString getInstance() const;
    /** PATH, followed by "[INDEX]" where the URL has one. */
    QString getUrlIncludingIndex() const;

private:
    QString m_StrModuleName;
    QString m_StrObjectName;
    QString m_StrInstance;
    QString m_StrUrlIncludingIndex;
};
