#include "KeyTexts.h"

#include "LanguageFolder.h"
#include "TextKey.h"

#include "LanguageDefinitions.h"

QVector<KeyText> keyTextsOf(const LanguageFolder& folder, const QString& baseLanguage)
{
    const QString& lastFallback = LanguageDefinitions::getSecondFallbackLanguageFilename();
    const QStringList loaded = folder.getAvailableLanguages();
    QStringList urls;
    for (const QString& language : {baseLanguage, lastFallback}) {
        if (loaded.contains(language))
            urls += folder.getAvailableUrls(language);
    }
    urls.sort();
    removeRepeated(urls);
    QVector<KeyText> texts;
    for (const QString& url : qAsConst(urls))
        texts.append(
            {url, folder.getText(url, baseLanguage), folder.getComment(url, baseLanguage)});
    return texts;
}
