#pragma once

#include "Finding.h"
#include "SourceTokens.h"
#include "TextKey.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

/** A place of a source where a text is asked for by its URL. */
struct TextUse {
    enum class Kind {
        Whole,     ///< the URL stands there
        Beginning, ///< the URL begins so, and the rest is put behind it at run time
        Unknown,   ///< the URL is not to be seen there
    };

    Kind kind = Kind::Unknown;
    QString url;
    Place place;
};

/** What a source says of texts. */
struct SourceUses {
    QVector<TextUse> uses;
    QSet<TextKey> literals; ///< all of them: one that is a URL may be handed on to a look-up
};

/** What a text URL may be called by, beside itself. */
struct UrlNames {
    QHash<TextKey, QString> cppConstants;  ///< "Menu::Save" to its URL, as in a generated header
    QHash<TextKey, QString> qmlProperties; ///< "menu.save" to its URL, as in a generated singleton
    QStringList textIdKeys;                ///< keys of JSON data whose values are text URLs
    QStringList languages;                 ///< what is asked for in their place is no text URL
};

/**
 * Finds the look-ups of the library's classes in C++, those of the QML module in QML, generated
 * constants in both, and the text ids of JSON data. It reads words and signs and knows no types: a
 * function of another class that is called as a look-up is taken for one.
 */
SourceUses findTextUses(const QString& source, SourceLanguage language, const UrlNames& names);
