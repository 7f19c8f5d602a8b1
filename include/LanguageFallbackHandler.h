#pragma once

#include "TextManagerLibraryExport.h"

#include <QString>
#include <QStringList>

/**
 * Chooses, out of the languages that are available, the one to use for a wanted language.
 *
 * A value class without a lock: use one object from one thread at a time, or only read it.
 */
class TEXTMANAGERLIBRARY_EXPORT LanguageFallbackHandler
{
public:
    /** @param languageKeyList the available language keys; their order plays no part. */
    LanguageFallbackHandler(const QStringList& languageKeyList);
    virtual ~LanguageFallbackHandler();

    /** Replaces the available language keys. */
    void setLanguageKeyList(const QStringList& languageKeyList);

    /**
     * The key to use for @p languageKey. The first of these that is available, compared exactly and
     * case-sensitively (de is no match for de_DE):
     *
     * 1. @p languageKey itself,
     * 2. "en_US",
     * 3. "POSIX".
     *
     * @return the key; empty, with a warning that names the available keys, when there is none.
     */
    QString getResultingLanguageKey(const QString& languageKey) const;

private:
    QStringList m_LanguageKeyList;
};
