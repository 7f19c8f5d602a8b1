#pragma once

#include <QString>

/** Where something stands in a file. */
struct Place {
    int line = 0;   ///< from 1; 0 when there is no place
    int column = 0; ///< in characters, from 1; 0 when there is no place
};

/** Something that a person should know about a language folder, before the customer sees it. */
struct Finding {
    enum class Class { Error, Warning, Info };

    QString id; ///< the kind of finding, such as "missing-text"
    Class findingClass = Class::Error;
    QString file; ///< relative to the language folder
    Place place;
    QString language; ///< key of the language; empty when the file has none
    QString url;      ///< text URL; empty when the file as a whole is meant
    QString reason;   ///< what is wrong and what to do about it, as a sentence
};
