#include "ReadAllTextsHelper.h"

#include "CompactJson_p.h"
#include "TextManagerBase.h"

ReadAllTextsHelper::~ReadAllTextsHelper() = default;

QMap<QString, QVariant>
ReadAllTextsHelper::getAllTextsAsVariantMap(const TextManagerBase& textManager,
                                            const QString& textUrl)
{
    QMap<QString, QVariant> texts;
    const QStringList languageKeys = textManager.getAvailableLanguages();
    for (const QString& languageKey : languageKeys) {
        bool ok = false;
        const QString text = textManager.getText(textUrl, ok, languageKey, false);
        if (ok)
            texts.insert(languageKey, text);
    }
    return texts;
}

QString ReadAllTextsHelper::getAllTextsAsJsonString(const TextManagerBase& textManager,
                                                    const QString& textUrl)
{
    QString jsonString;
    convertVariantMapToJsonString(getAllTextsAsVariantMap(textManager, textUrl), jsonString);
    return jsonString;
}

void ReadAllTextsHelper::convertVariantMapToJsonString(const QMap<QString, QVariant>& map,
                                                       QString& jsonString)
{
    jsonString = toCompactJson(map);
}
