#pragma once

#include <QString>

struct SystemInformationManagerRegistryDefinitions {
    static QString getKeyLabelTextId() { return QStringLiteral("id"); }
    static QString getKeyLabel() { return QStringLiteral("text"); }
    static QString getKeyLabelShort() { return QStringLiteral("short"); }
};
