#pragma once

#include "LanguageDefinitions.h"
#include "TextManagerDefinitions.h"

/** The header key that @p headerInfo selects; empty for a value that is no enumerator. */
inline QString headerKey(TextManagerDefinitions::HeaderInfo headerInfo)
{
    switch (headerInfo) {
    case TextManagerDefinitions::Language:
        return LanguageDefinitions::getJsonHeaderLanguageKey();
    case TextManagerDefinitions::SubLanguage:
        return LanguageDefinitions::getJsonHeaderSubLanguageKey();
    }
    return QString();
}
