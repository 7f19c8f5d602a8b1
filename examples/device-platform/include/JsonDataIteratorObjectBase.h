#pragma once

#include <QJsonObject>

struct JsonDataIteratorObjectBase {
    virtual ~JsonDataIteratorObjectBase() = default;
    virtual void compute(QJsonObject&, QJsonValue&) {}
};
