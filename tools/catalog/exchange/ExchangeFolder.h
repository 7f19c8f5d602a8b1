#pragma once

#include "ExchangeTexts.h"

#include <QString>
#include <QStringList>

#include <optional>

/**
 * A language folder as far as its texts travel. The folder is listed and the base is read once, a
 * language when it is asked for.
 */
class ExchangeFolder
{
public:
    /** @param shortFolder name of the sub-folder of short texts; empty: there are none. */
    ExchangeFolder(const QString& folderPath, const QString& shortFolder,
                   const QString& baseLanguage);

    /** Why no text can travel, with the place of it; empty when they can. */
    const QString& fault() const { return m_StrFault; }

    /** The keys of all languages that are translated: neither the base, nor the texts of no
     * language, nor what was made to be looked at only. */
    QStringList translatedLanguages() const;
    /** Why a language that is there is not translated from the base; empty when it is. */
    QString explainUntranslated(const QString& language) const;
    /** Whether there is one of the files that belong to the folder at @p path, behind a link, too.
     */
    bool hasFile(const QString& path) const;
    /** The key of the language that is called so here or as a tag; empty when there is none. */
    QString findLanguage(const QString& name) const;

    /**
     * Reads a language as it is now.
     *
     * @param fault receives why that is not possible, with the place of it.
     */
    std::optional<ExchangeTexts> read(const QString& language, QString& fault) const;

    /** The same of a language whose texts the caller has read. */
    ExchangeTexts beside(const QString& language, const LanguageTexts& texts,
                         const LanguageTexts& shortTexts) const;

    const QString& path() const { return m_StrFolderPath; }
    bool hasShortFolder() const { return !m_StrShortFolder.isEmpty(); }
    QString shortFolderPath() const;

private:
    ExchangeSide readBase(const QString& folderPath);
    bool isPseudo(const QString& language) const;

    QString m_StrFolderPath;
    QString m_StrShortFolder;
    QString m_StrBaseLanguage;
    QString m_StrFault;
    QStringList m_Languages;
    ExchangeTexts m_Base; ///< without a language
};
