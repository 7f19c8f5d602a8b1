#pragma once

#include "JsonTree.h"

#include <rapidjson/error/error.h>

/** What the parser refused at @p offset, in words: what it found there and what it expected. */
JsonFault describeJsonError(const QByteArray& bytes, rapidjson::ParseErrorCode code, int offset);
