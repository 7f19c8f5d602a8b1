#include "RecordUpdates.h"

#include "CheckSettings.h"
#include "LanguageReading.h"
#include "LanguageTexts.h"
#include "PseudoLanguage.h"
#include "RegularFile.h"

#include "LanguageDefinitions.h"

#include <algorithm>

namespace
{

/** The URL that a text had before it was moved. */
QString oldUrlOf(const QString& url, const QMap<QString, QString>& oldUrls)
{
    const QString& separator = LanguageDefinitions::getUrlSeparator();
    for (auto moved = oldUrls.begin(); moved != oldUrls.end(); ++moved) {
        if (url == moved.key() || url.startsWith(moved.key() + separator))
            return moved.value() + url.mid(moved.key().size());
    }
    return url;
}

QString baseLanguageOf(const QString& folderPath)
{
    CheckSettings settings;
    settings.readFrom(folderPath);
    return settings.base;
}

/** Whether a text is another one, which is not so where there was none. */
bool isReplaced(const LanguageTexts::Entry& entry, const LanguageTexts& before,
                const QMap<QString, QString>& oldUrls)
{
    const QString text = before.text(oldUrlOf(entry.url, oldUrls));
    return !text.isEmpty() && text != entry.text;
}

QMap<QString, QString> allTexts(const LanguageTexts& texts)
{
    QMap<QString, QString> all;
    for (const LanguageTexts::Entry& entry : texts.entries()) {
        if (!entry.text.isEmpty())
            all.insert(entry.url, entry.text);
    }
    return all;
}

/** Whether a language beside the base has a text at the URL: it may be there again one day. */
bool isTranslated(const QString& url, const QVector<LanguageTexts>& others)
{
    return std::any_of(others.begin(), others.end(),
                       [&](const LanguageTexts& texts) { return !texts.text(url).isEmpty(); });
}

void noteRemovals(const DocumentEdit& edit, const LanguageTexts& before, const LanguageTexts& after,
                  BaseTextRecord& record)
{
    QStringList removed;
    for (const LanguageTexts::Entry& entry : before.entries()) {
        if (!after.contains(entry.url))
            removed.append(entry.url);
    }
    if (removed.isEmpty() || !record.isBegun())
        return;
    QVector<LanguageTexts> others;
    for (const QString& language : listLanguages(edit.folderPath)) {
        QString fault; // what cannot be read has no text that could be kept
        if (language != edit.language)
            others.append(readTexts(edit.folderPath, language, fault));
    }
    for (const QString& url : qAsConst(removed)) {
        if (!isTranslated(url, others))
            record.noteRemoval(url);
    }
}

/** Begins a record in which every text is of the base as it is. @return why that cannot be done. */
QString begin(const DocumentEdit& edit, const QString& baseLanguage, BaseTextRecord& record)
{
    QString fault;
    const LanguageTexts base = readTexts(edit.folderPath, baseLanguage, fault);
    if (fault.isEmpty())
        record.begin(baseLanguage, allTexts(base));
    return fault;
}

/** Whether a text is said to be of a base text that is no more: a reason to begin a record. */
bool hasOldText(const DocumentEdit& edit)
{
    return std::any_of(edit.baseTexts.begin(), edit.baseTexts.end(),
                       [](const NotedBaseText& text) { return text.isOld; });
}

/** @return why that cannot be done. */
QString noteEditOfBase(const DocumentEdit& edit, BaseTextRecord& record)
{
    QString fault;
    const LanguageTexts before(edit.document.documentAsRead());
    const LanguageTexts after(edit.document.document());
    const bool isBeginning =
        !record.isBegun() && listLanguages(edit.folderPath, fault).size() > 1 &&
        std::any_of(after.entries().begin(), after.entries().end(),
                    [&](const auto& entry) { return isReplaced(entry, before, edit.oldUrls); });
    if (isBeginning)
        record.begin(edit.language, allTexts(before));
    noteRemovals(edit, before, after, record);
    for (const LanguageTexts::Entry& entry : after.entries()) {
        if (!entry.text.isEmpty())
            record.noteBaseText(entry.url, before.text(oldUrlOf(entry.url, edit.oldUrls)),
                                entry.text);
    }
    return fault;
}

/** @return why the base cannot be read; empty when it can. */
QString noteEditOfOther(const DocumentEdit& edit, BaseTextRecord& record)
{
    QString fault;
    const QJsonObject document = edit.document.document();
    if (PseudoLanguage::isPseudo(document)) // nothing of it is ever called stale
        return fault;
    const LanguageTexts before(edit.document.documentAsRead());
    const LanguageTexts base = readTexts(edit.folderPath, record.baseLanguage(), fault);
    const LanguageTexts lastFallback =
        readTexts(edit.folderPath, LanguageDefinitions::getSecondFallbackLanguageFilename(), fault);
    const LanguageTexts after(document);
    for (const LanguageTexts::Entry& entry : after.entries()) {
        const QString ofBase = base.text(entry.url);
        const QString baseText = ofBase.isEmpty() ? lastFallback.text(entry.url) : ofBase;
        // What was moved by an interrupted run has its new URL already.
        const bool isChanged = entry.text != before.text(entry.url) &&
                               entry.text != before.text(oldUrlOf(entry.url, edit.oldUrls));
        if (isChanged && !baseText.isEmpty())
            record.noteText(entry.url, edit.language, baseText);
    }
    return fault;
}

} // namespace

QString RecordUpdates::add(const DocumentEdit& edit)
{
    const bool hasRecord = !isNothingAt(BaseTextRecord::pathIn(edit.folderPath));
    if (!hasRecord && !hasOldText(edit) && edit.language != baseLanguageOf(edit.folderPath))
        return QString();
    Folder* folder = nullptr;
    const QString fault = open(edit, folder);
    return fault.isEmpty() ? note(edit, *folder) : fault;
}

std::vector<FileTransaction*> RecordUpdates::inOrder(std::vector<FileTransaction*> documents)
{
    for (auto& [path, folder] : m_Folders) {
        if (folder.record.isBegun())
            folder.file.write(BaseTextRecord::pathIn(path), folder.record.bytes());
        documents.insert(folder.isFirst ? documents.begin() : documents.end(), &folder.file);
    }
    return documents;
}

QString RecordUpdates::open(const DocumentEdit& edit, Folder*& folder)
{
    const auto [place, isNew] = m_Folders.try_emplace(edit.folderPath);
    folder = &place->second;
    if (!isNew)
        return QString();
    QString fault = folder->file.lock({BaseTextRecord::pathIn(edit.folderPath)});
    if (fault.isEmpty())
        folder->record = BaseTextRecord::readFrom(edit.folderPath, fault);
    folder->baseLanguage =
        folder->record.isBegun() ? folder->record.baseLanguage() : baseLanguageOf(edit.folderPath);
    return fault;
}

QString RecordUpdates::note(const DocumentEdit& edit, Folder& folder)
{
    for (auto moved = edit.oldUrls.begin(); moved != edit.oldUrls.end(); ++moved) {
        if (!folder.oldUrls.contains(moved.key()))
            folder.record.noteRename(moved.value(), moved.key());
        folder.oldUrls.insert(moved.key(), moved.value());
    }
    QString fault;
    folder.isFirst = folder.isFirst || edit.language == folder.baseLanguage;
    if (edit.language == folder.baseLanguage)
        fault = noteEditOfBase(edit, folder.record);
    else if (!folder.record.isBegun() && hasOldText(edit))
        fault = begin(edit, folder.baseLanguage, folder.record);
    else if (folder.record.isBegun() && edit.document.isTouched())
        fault = noteEditOfOther(edit, folder.record);
    for (const NotedBaseText& text : edit.baseTexts)
        folder.record.noteText(text.url, edit.language, text.baseText);
    return fault;
}
