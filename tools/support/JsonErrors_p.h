#pragma once

#include "JsonTree.h"

#include <rapidjson/error/error.h>

/** Offset of the first byte that is no UTF-8; the size of the text when all of it is. */
int findNoUtf8(const QByteArray& bytes);

/** What the parser refused at @p offset, in words: what it found there and what it expected. */
JsonFault describeJsonError(const QByteArray& bytes, rapidjson::ParseErrorCode code, int offset);
