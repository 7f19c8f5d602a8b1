#pragma once

#include "ExchangeFolder.h"
#include "ImportPlan.h"
#include "LanguageFileEditor.h"

#include <QJsonObject>
#include <QString>
#include <QVector>

#include <memory>
#include <vector>

/** One file on its way into its language, whose files are locked as long as the object lives. */
class LanguageImport
{
public:
    struct Change {
        enum class Kind {
            Added,     ///< there was no such text before
            Changed,   ///< the text is another one
            Confirmed, ///< the text is the same, and no longer stale
        };

        QString url;
        bool isShort = false;
        Kind kind = Kind::Changed;
    };

    /**
     * Locks and reads the language, and changes it as the file says, but for saving it.
     *
     * @return null when it cannot be edited; @p fault says why.
     */
    static std::unique_ptr<LanguageImport> open(const ExchangeFolder& folder,
                                                const QString& language, const ExchangeFile& file,
                                                const ImportOptions& options, QString& fault);

    /** Saves all of them, and what the texts are of. @return false, and nothing is changed, when
     * that is not possible; @p fault says why. */
    static bool save(const std::vector<std::unique_ptr<LanguageImport>>& imports, QString& fault);

    const QString& language() const { return m_StrLanguage; }
    /** How the caller calls the file. */
    const QString& name() const { return m_StrName; }
    void setName(const QString& name) { m_StrName = name; }

    const QVector<Change>& changes() const { return m_Changes; }
    /** How many texts were there already. */
    int sameCount() const { return m_SameCount; }
    /** How many of these are of an older base text, and stay so. */
    int staleCount() const { return m_StaleCount; }
    const QVector<ExchangeFault>& leftOut() const { return m_LeftOut; }

private:
    explicit LanguageImport(const ExchangeFolder& folder, const QString& language);

    bool openEditors(bool isShortWanted, EditFault& fault);
    void apply(const ImportPlan& plan, const ExchangeTexts& texts);
    void note(const ImportPlan::NewText& text);
    void replaceTexts(const ImportPlan& plan, const ExchangeTexts& texts);
    QString add(const ImportPlan::NewText& text, const QString& comment);

    const ExchangeFolder& m_Folder;
    QString m_StrLanguage;
    QString m_StrName;
    std::unique_ptr<LanguageFileEditor> m_pFull;
    std::unique_ptr<LanguageFileEditor> m_pShort; ///< null where no short text is imported
    QVector<Change> m_Changes;
    int m_SameCount = 0;
    int m_StaleCount = 0;
    QVector<ExchangeFault> m_LeftOut;
};
