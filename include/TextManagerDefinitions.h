#pragma once

#include "TextManagerLibraryExport.h"

#include <QString>

/** Enumerations shared by readers and writers, and the D-Bus names of the text service. */
namespace TextManagerDefinitions
{

/**
 * Selects one member of a language file's header.
 *
 * The underlying type is fixed because values outside the enumerators are legal input: the
 * operations that take one report it and answer with an empty text.
 */
enum HeaderInfo : int {
    Language = 0,    ///< the header's "language"
    SubLanguage = 1, ///< the header's "subLanguage"
};

/**
 * Result of a write by text URL. Test for Success and treat every other value as a failure: 1 and
 * 2 are reserved and never returned.
 */
enum SetReturnValue : int {
    Success = 0, ///< the value was written
    Error = 3,   ///< the value was refused
};

/** Module name of the text service: "TextManager". */
TEXTMANAGERLIBRARY_EXPORT const QString& getModuleName();
/** Object name of the text service: "TextHandling". */
TEXTMANAGERLIBRARY_EXPORT const QString& getObjectName();
/** Interface name of the text service: "Interface.TextManager". */
TEXTMANAGERLIBRARY_EXPORT const QString& getInterfaceName();
/** Method that translates a list of text URLs: "getTranslatedTextFromUrlList". */
TEXTMANAGERLIBRARY_EXPORT const QString& getDBusMethodGetTranslatedTextFromUrlList();

} // namespace TextManagerDefinitions
