#pragma once

#include <QVariant>

struct DBusReply {
    bool isError() const { return value.isNull(); }
    QString getErrorMessage() const { return QString(); }
    QVariant getValue() const { return value; }
    QVariant value;
};
