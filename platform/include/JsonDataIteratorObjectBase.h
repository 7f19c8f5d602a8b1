#pragma once

#include "ReferencePlatformExport.h"

#include <QJsonObject>
#include <QJsonValue>

/** What is done with each object of JSON data on a walk over them, such as JsonDataIterator's. */
class REFERENCEPLATFORM_EXPORT JsonDataIteratorObjectBase
{
public:
    JsonDataIteratorObjectBase() = default;
    virtual ~JsonDataIteratorObjectBase();

    /**
     * Reads or changes one object, in place.
     *
     * @param object the object, with all that is below it.
     * @param value goes through the whole walk: what one call leaves in it, the next one finds.
     */
    virtual void compute(QJsonObject& object, QJsonValue& value) = 0;
};
