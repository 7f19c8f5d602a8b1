#pragma once

#include "JsonTree.h"

/** The keys that have a meaning of their own in a text node. */
struct NodeKeys {
    const JsonKey text;
    const JsonKey comment;
    const JsonKey childs;
};

const NodeKeys& nodeKeys();
