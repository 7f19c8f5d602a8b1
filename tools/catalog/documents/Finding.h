#pragma once

#include "Place.h"

#include <QString>

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
