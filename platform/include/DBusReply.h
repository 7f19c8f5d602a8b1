#pragma once

#include "ReferencePlatformExport.h"

#include <QString>
#include <QVariant>

/** What a service on the bus answered: a value, or the text of an error. A plain value. */
class REFERENCEPLATFORM_EXPORT DBusReply
{
public:
    /** The reply of a call that was never made: an error. */
    DBusReply();

    /** @param value what the service answered; invalid when its reply held no value. */
    static DBusReply fromValue(const QVariant& value);
    /** @param message the error's text, as the service or the bus worded it. */
    static DBusReply fromError(const QString& message);

    /** Whether there is no answer but an error. */
    bool isError() const;
    /** The error's text; empty without an error. */
    QString getErrorMessage() const;
    /**
     * The value, of Qt's own types only: texts, numbers, QVariantList and QVariantMap. Invalid
     * after an error, and for a reply that held no value.
     */
    QVariant getValue() const;

private:
    bool m_IsError = true;
    QString m_StrErrorMessage;
    QVariant m_Value;
};
