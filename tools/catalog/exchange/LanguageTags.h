#pragma once

#include <QString>

// Languages are called by their keys in a language folder, de_DE, and by tags (BCP 47) in XML,
// de-DE.

/** The tag of a language; empty when it has none: see explainMissingTag(). */
QString tagOfLanguage(const QString& languageKey);

/** Why a language has no tag, as a sentence. */
QString explainMissingTag(const QString& languageKey);

/** Whether a key or tag that was read names the language @p languageKey. */
bool isSameLanguage(const QString& name, const QString& languageKey);
