#pragma once

#include "AnswerMemory_p.h"
#include "LanguageFile_p.h"
#include "LookUpLocker_p.h"

#include <QHash>
#include <QJsonObject>
#include <QMap>
#include <QString>

/** What a text manager remembers so as not to do it again. Its mutex guards all but the patience.
 */
class TextManagerMemory
{
public:
    using Documents = QMap<QString, QJsonObject>;
    using Files = QHash<QString, LanguageFile>;

    /**
     * Forgets all answers when the documents are no longer those of the last call.
     *
     * The memory shares the data of the documents' maps. So every change, also one that a subclass
     * makes itself, gives a map other data, and is seen in constant time.
     */
    void keepAnswersOnlyFor(const Documents& languageMap, const Documents& shortLanguageMap)
    {
        if (m_LanguageMap.isSharedWith(languageMap) &&
            m_ShortLanguageMap.isSharedWith(shortLanguageMap))
            return;
        forgetAnswers();
        m_LanguageMap = languageMap;
        m_ShortLanguageMap = shortLanguageMap;
    }

    /** Forgets all answers and lets go of the documents that they were read from. */
    void forgetAnswers()
    {
        texts.clear();
        shortTexts.clear();
        answeringLanguages.clear();
        m_LanguageMap.clear();
        m_ShortLanguageMap.clear();
    }

    LookUpPatience patience;
    AnswerMemory texts;
    AnswerMemory shortTexts;
    AnswerMemory answeringLanguages;
    Files files; ///< what was loaded, by path

private:
    Documents m_LanguageMap;
    Documents m_ShortLanguageMap;
};
