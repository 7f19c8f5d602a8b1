#include "DBusReply.h"

DBusReply::DBusReply()
    : m_StrErrorMessage(QStringLiteral("No call was made"))
{
}

DBusReply DBusReply::fromValue(const QVariant& value)
{
    DBusReply reply;
    reply.m_IsError = false;
    reply.m_StrErrorMessage.clear();
    reply.m_Value = value;
    return reply;
}

DBusReply DBusReply::fromError(const QString& message)
{
    DBusReply reply;
    reply.m_StrErrorMessage = message;
    return reply;
}

bool DBusReply::isError() const
{
    return m_IsError;
}

QString DBusReply::getErrorMessage() const
{
    return m_StrErrorMessage;
}

QVariant DBusReply::getValue() const
{
    return m_Value;
}
