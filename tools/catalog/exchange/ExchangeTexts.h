#pragma once

#include "BaseTextRecord.h"
#include "ExchangeFile.h"
#include "LanguageTexts.h"

#include <QString>

/** What a folder has for the texts of one language, the full or the short ones. */
struct ExchangeSide {
    LanguageTexts base;
    LanguageTexts lastFallback; ///< texts of no language, which stand where the base has none
    LanguageTexts language;
    BaseTextRecord record;

    bool hasBaseText(const QString& url) const;
    QString baseText(const QString& url) const;
    QString comment(const QString& url) const;
};

/** All that counts when the texts of one language travel. */
struct ExchangeTexts {
    QString baseLanguage;
    QString language;
    ExchangeSide full;
    ExchangeSide shortTexts; ///< empty where there are none

    const ExchangeSide& side(bool isShort) const { return isShort ? shortTexts : full; }
    /** Whether there is something to translate at the URL. */
    bool hasBaseText(const QString& url, bool isShort) const;
    /** What is to be translated: for a short text the base's, or else its full text. */
    QString baseText(const QString& url, bool isShort) const;
    QString comment(const QString& url, bool isShort) const;
    /** What the text of the language is of, if that is not what is to be translated now. */
    std::optional<QString> findOldBaseText(const QString& url, bool isShort) const;
};

enum class ExchangeSelection { All, Missing, Stale };

/** The texts of a language as they travel to a translator, the full ones and then the short ones,
 * in the order of the base's files. What has no base text stays at home. */
ExchangeFile collectUnits(const ExchangeTexts& texts, ExchangeSelection selection);
