#pragma once

#include <QString>

struct SelectorUrlHandler {
    explicit SelectorUrlHandler(const QString&) {}
    bool isValid() const { return false; }
    QString getModuleName() const { return QString(); }
    QString getObjectName() const { return QString(); }
    QString getInstance() const { return QString(); }
    QString getUrlIncludingIndex() const { return QString(); }
};
