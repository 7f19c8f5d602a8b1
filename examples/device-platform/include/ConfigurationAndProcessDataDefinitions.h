#pragma once

#include <QString>

struct ConfigurationAndProcessDataDefinitions {
    static QString getKeyDataPropertyLabelTextId() { return QStringLiteral("id"); }
    static QString getKeyDataPropertyLabelText() { return QStringLiteral("text"); }
    static QString getKeyDataPropertyLabelTextUrl() { return QStringLiteral("url"); }
};
