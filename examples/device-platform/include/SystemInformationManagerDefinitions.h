#pragma once

#include <QString>

struct SystemInformationManagerDefinitions {
    static QString getObjectNameConfiguration() { return QStringLiteral("Conf"); }
};
