#include "NodeKeys.h"

#include "LanguageDefinitions.h"

const NodeKeys& nodeKeys()
{
    static const NodeKeys keys = {LanguageDefinitions::getJsonTextName(),
                                  LanguageDefinitions::getJsonCommentName(),
                                  LanguageDefinitions::getJsonChildsKey()};
    return keys;
}
