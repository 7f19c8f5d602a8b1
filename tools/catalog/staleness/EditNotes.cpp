#include "EditNotes.h"

#include "CheckSettings.h"
#include "LanguageReading.h"
#include "LanguageTexts.h"

#include "LanguageDefinitions.h"

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
    const LanguageTexts baseTexts(readLanguage(folderPath, base, fault));
    const LanguageTexts fallbackTexts(
        readLanguage(folderPath, LanguageDefinitions::getSecondFallbackLanguageFilename(), fault));
    for (const LanguageTexts::Entry& entry : textsAfter.entries()) {
        const QString ofBase = baseTexts.text(entry.url);
        const QString baseText = ofBase.isEmpty() ? fallbackTexts.text(entry.url) : ofBase;
        if (entry.text != textsBefore.text(entry.url) && !baseText.isEmpty())
            record.noteText(entry.url, language, baseText);
    }
}
