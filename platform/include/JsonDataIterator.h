#pragma once

#include "ReferencePlatformExport.h"

#include <QJsonValue>

class JsonDataIteratorObjectBase;

/**
 * Walks JSON data and hands every object in them, those in arrays too, to a
 * JsonDataIteratorObjectBase.
 *
 * The walk is depth-first in the order of the data: an object comes before those below it, which
 * are looked for in what compute() made of it. It takes time in proportion to the data, and no more
 * stack for deep data than for flat ones.
 *
 * No state and no lock: data and object belong to the walk while it lasts.
 */
class REFERENCEPLATFORM_EXPORT JsonDataIterator
{
public:
    JsonDataIterator() = delete;

    /**
     * @param data is changed in place. Copies of it that the caller keeps stay as they are, but
     * cost a copy of every container.
     * @return what the last call of compute() left in its value; null when there was none.
     */
    static QJsonValue iterate(QJsonValue& data, JsonDataIteratorObjectBase& object);
};
