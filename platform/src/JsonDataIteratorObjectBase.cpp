#include "JsonDataIteratorObjectBase.h"

JsonDataIteratorObjectBase::~JsonDataIteratorObjectBase() = default;
