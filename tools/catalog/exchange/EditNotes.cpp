#include "EditNotes.h"

#include "CheckSettings.h"
#include "ExchangeFolder.h"

#include <algorithm>

namespace
{

/** Replaced texts begin the record, unless nobody translates them. */
bool isBeginning(const QString& folderPath, const LanguageTexts& before, const LanguageTexts& after)
{
    const auto isReplaced = [&](const LanguageTexts::Entry& entry) {
        return !entry.text.isEmpty() && after.contains(entry.url) &&
               after.text(entry.url) != entry.text;
    };
    return std::any_of(before.entries().begin(), before.entries().end(), isReplaced) &&
           listLanguages(folderPath).size() > 1;
}

void noteEditOfBase(const QString& language, const LanguageTexts& before,
                    const LanguageTexts& after, BaseTextRecord& record)
{
    if (!record.isBegun()) {
        QMap<QString, QString> texts;
        for (const LanguageTexts::Entry& entry : before.entries()) {
            if (!entry.text.isEmpty())
                texts.insert(entry.url, entry.text);
        }
        record.begin(language, texts);
    }
    for (const LanguageTexts::Entry& entry : after.entries()) {
        if (!entry.text.isEmpty())
            record.noteBaseText(entry.url, before.text(entry.url), entry.text);
    }
}

} // namespace

void noteEdit(const QString& folderPath, const QString& language, const QJsonObject& before,
              const QJsonObject& after, BaseTextRecord& record, QString& fault)
{
    CheckSettings settings;
    settings.readFrom(folderPath);
    const QString base = record.isBegun() ? record.baseLanguage() : settings.base;
    if (!record.isBegun() && language != base)
        return;
    const LanguageTexts textsBefore(before);
    const LanguageTexts textsAfter(after);
    if (language == base) {
        if (record.isBegun() || isBeginning(folderPath, textsBefore, textsAfter))
            noteEditOfBase(language, textsBefore, textsAfter, record);
        return;
    }
    const ExchangeFolder folder(folderPath, QString(), base);
    fault = folder.fault();
    for (const LanguageTexts::Entry& entry : textsAfter.entries()) {
        const QString baseText = folder.baseText(entry.url);
        if (entry.text != textsBefore.text(entry.url) && !baseText.isEmpty())
            record.noteText(entry.url, language, baseText);
    }
}
