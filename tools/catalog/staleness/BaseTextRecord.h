#pragma once

#include "Finding.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

/**
 * What the base texts of a language folder were when the other languages were translated. A text is
 * stale when that is not what its base text is now.
 *
 * It is kept in a file beside the language files, of a name that no text manager loads, a line for
 * each text in the order of the URLs, so that git shows and merges it. Where there is none, nothing
 * is stale; the first change of a base text begins it, with all base texts as they were. From then
 * on a base text that is changed by hand is seen, too.
 */
class BaseTextRecord
{
public:
    static QString fileName();

    /** A record that is not begun. */
    BaseTextRecord() = default;

    static QString pathIn(const QString& folderPath);
    /** Reads the record of a folder; one that is not begun where there is none. @param fault
     * receives why it cannot be read, with its place. */
    static BaseTextRecord readFrom(const QString& folderPath, QString& fault);

    /** Reads a record. @return why its bytes are none; the record is then as it was. */
    std::optional<Finding> read(const QByteArray& bytes);
    QByteArray bytes() const;

    bool isBegun() const { return !m_StrBaseLanguage.isEmpty(); }
    /** The language that the record calls the base; empty when it is not begun. */
    const QString& baseLanguage() const { return m_StrBaseLanguage; }

    /** Begins the record; @p baseTexts are by URL, and every text that there is is of them. */
    void begin(const QString& baseLanguage, const QMap<QString, QString>& baseTexts);

    /** The base text that a text is of; nothing when that is not known. */
    std::optional<QString> baseTextOf(const QString& url, const QString& language) const;
    /** As baseTextOf(), but nothing, too, when that is what the base text still is. */
    std::optional<QString> findOldBaseText(const QString& url, const QString& language,
                                           const QString& baseText) const;

    // Each keeps a record that is begun, and does nothing otherwise.

    /** The base text at @p url is replaced by @p after. */
    void noteBaseText(const QString& url, const QString& before, const QString& after);
    /** The text of @p language, which is translated, is of @p baseText. */
    void noteText(const QString& url, const QString& language, const QString& baseText);
    /** The text and all below it got another URL. */
    void noteRename(const QString& url, const QString& newUrl);
    /** Neither the base nor any other language has such a text any more. */
    void noteRemoval(const QString& url) { m_Texts.remove(url); }

private:
    QString readLine(const QString& line);
    bool canBeStale(const QString& language) const;

    QString m_StrBaseLanguage;
    /** Base texts by URL and language; under the base's own key for all languages without one. */
    QMap<QString, QMap<QString, QString>> m_Texts;
};
