#pragma once

#include "TextKey.h"
#include "TextUses.h"

#include <QString>
#include <QStringList>
#include <QVector>

class LanguageFolder;

/** A source with its path as it is shown. */
struct SourceFile {
    QString path;
    SourceLanguage language = SourceLanguage::Cpp;
};

/** A use and the source that it is in. */
struct PlacedUse {
    QString path;
    TextUse use;
};

/** The sources at paths, those of folders among them, in the order of their names. */
struct SourceList {
    QVector<SourceFile> files;
    QStringList faults; ///< paths that are no source and no folder, and why
};
SourceList listSources(const QStringList& paths);

/** What sources ask for, held against the texts that a language folder has. */
class FolderUsage
{
public:
    /** @param textIdKeys keys of JSON data that hold text ids, beside those of the data types. */
    FolderUsage(const LanguageFolder& folder, const QString& baseLanguage,
                const QStringList& textIdKeys);

    /** Looks at one source. @return why it cannot be read; empty when it was. */
    QString add(const SourceFile& source);

    /** URLs that no language has. */
    const QVector<PlacedUse>& unknown() const { return m_Unknown; }
    /** What is put together at run time, and so cannot be told. */
    const QVector<PlacedUse>& atRunTime() const { return m_AtRunTime; }
    /** URLs of the folder that no source names, and that begin as nothing put together does. */
    QStringList findUnused() const;

private:
    void addUse(const QString& path, const TextUse& use);
    bool isKnown(const QString& url) const;

    const LanguageFolder& m_Folder;
    const QStringList m_Languages;
    UrlNames m_Names;
    QSet<TextKey> m_Named;
    QStringList m_Beginnings;
    QVector<PlacedUse> m_Unknown;
    QVector<PlacedUse> m_AtRunTime;
};
