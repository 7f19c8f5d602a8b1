#pragma once

#include "TextManagerLibraryExport.h"

#include <QMap>
#include <QString>
#include <QVariant>

class TextManagerBase;

/**
 * Exports one text of the language files in all languages, as a translateable text object: a flat
 * map from language key to text, which a TranslateableTextHelper takes.
 *
 * The class has no state; all operations are static, may come from any thread, and log nothing. The
 * text manager takes its lock for every single language, not for the whole export: a reload in
 * another thread may fall between two of them.
 */
class TEXTMANAGERLIBRARY_EXPORT ReadAllTextsHelper
{
public:
    ReadAllTextsHelper() = default;
    virtual ~ReadAllTextsHelper();

    /**
     * The text at @p textUrl in every language that @p textManager has loaded, each with the
     * fallback of TextManagerBase::getText(): a language without the text shows that of "en_US" or
     * "POSIX".
     *
     * A language is left out when getText() reports that nothing was found; an empty text that is
     * there is kept. Empty when no language has the URL, or none is loaded.
     */
    static QMap<QString, QVariant> getAllTextsAsVariantMap(const TextManagerBase& textManager,
                                                           const QString& textUrl);

    /** getAllTextsAsVariantMap() as JSON in one line without blanks; "{}" when it is empty. */
    static QString getAllTextsAsJsonString(const TextManagerBase& textManager,
                                           const QString& textUrl);

    /** Writes @p map into @p jsonString as a JSON object in one line without blanks. */
    static void convertVariantMapToJsonString(const QMap<QString, QVariant>& map,
                                              QString& jsonString);
};
