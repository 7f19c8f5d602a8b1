#pragma once

#include "TextManagerLibraryExport.h"

#include <QString>

class TextManagerBase;

/**
 * What a reader of texts needs, in one object: the text manager, the language, and whether the
 * normal or the short text is wanted.
 *
 * **Ownership.** The text manager stays the caller's and must outlive this object, which has no
 * setter for it and cannot be assigned: another text manager, or another language, wants another
 * object.
 *
 * **Threads.** No lock: only read it, and it may be used from several threads, as the text manager
 * may.
 */
class TEXTMANAGERLIBRARY_EXPORT TextManagerReferenceParameters
{
public:
    /** The underlying type is fixed because values outside the enumerators are legal input, which
     * getText() reports. */
    enum ReadMode : int {
        NormalText = 0,
        ShortText = 1,
    };

    /**
     * Reads normal texts until setReadMode() says otherwise.
     *
     * @param language the key of the language to read in; empty stands for the text manager's
     * current language at the time of each look-up.
     */
    TextManagerReferenceParameters(const TextManagerBase& textManager, const QString& language);
    virtual ~TextManagerReferenceParameters();

    /** The text manager to read from. */
    const TextManagerBase& getTextManager() const;
    /** The key of the language to read in, as the constructor was given it. */
    QString getLanguage() const;

    /** Sets what getText() reads. Deliberately unchecked: getText() warns. */
    void setReadMode(ReadMode readMode);

    /**
     * The normal or the short text at @p textUrl, as the read mode says, with the fallbacks of
     * TextManagerBase::getText() and TextManagerBase::getShortText(). An invalid read mode reads
     * the normal text, with a warning each time.
     */
    QString getText(const QString& textUrl) const;

    /** The short text at @p textUrl, as TextManagerBase::getShortText() answers it, whatever the
     * read mode. The lock is taken once: a text manager built in memory will do. */
    QString getShortText(const QString& textUrl) const;

private:
    const TextManagerBase& m_TextManager; ///< not owned
    QString m_StrLanguage;                ///< key of the language to read in
    ReadMode m_ReadMode = NormalText;
};
