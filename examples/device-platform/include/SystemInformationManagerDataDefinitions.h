#pragma once

#include <QString>

struct SystemInformationManagerDataDefinitions {
    static QString getKeyLabelTextId() { return QStringLiteral("id"); }
    static QString getKeyLabelText() { return QStringLiteral("text"); }
    static QString getKeyLabelTextShort() { return QStringLiteral("short"); }
    static QString getKeyValueTextId() { return QStringLiteral("valueId"); }
    static QString getKeyValueText() { return QStringLiteral("valueText"); }
    static QString getKeyValueTextShort() { return QStringLiteral("valueShort"); }
};
