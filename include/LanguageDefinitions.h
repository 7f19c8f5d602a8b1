#pragma once

#include "TextManagerLibraryExport.h"

#include <QString>

/**
 * The vocabulary of language files: every key of the file format and the names of the two fallback
 * languages.
 *
 * Each accessor returns the same object on every call. It is built on the first call, whichever
 * thread makes it, and lives until the program exits.
 */
class TEXTMANAGERLIBRARY_EXPORT LanguageDefinitions
{
public:
    LanguageDefinitions() = delete;

    /** The language that is tried after the wanted one: "en_US". */
    static const QString& getFirstFallbackLanguageFilename();
    /** The language that is tried last: "POSIX". */
    static const QString& getSecondFallbackLanguageFilename();

    /** Root key of the object that describes the language: "Header". */
    static const QString& getJsonHeaderName();
    /** Header key of the language: "language". */
    static const QString& getJsonHeaderLanguageKey();
    /** Header key of the sub-language: "subLanguage". */
    static const QString& getJsonHeaderSubLanguageKey();

    /**
     * Name of the language element in the device configuration: "Language".
     *
     * It is no key of a language file; there the header's key is getJsonHeaderLanguageKey().
     */
    static const QString& getJsonLanguageKey();

    /** Root key of the content tree: "Content". */
    static const QString& getJsonContentName();
    /** Key of a node's child container: "childs". The file format spells it so; it stays. */
    static const QString& getJsonChildsKey();
    /** Key of a node's text: "text". */
    static const QString& getJsonTextName();
    /** Key of a node's comment for translators: "comment". */
    static const QString& getJsonCommentName();

    /** What separates the node keys of a text URL: "/". */
    static const QString& getUrlSeparator();
};
