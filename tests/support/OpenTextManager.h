#pragma once

#include "LanguageFiles.h"
#include "WarningCapture.h"

#include "TextManagerBase.h"

#include <QTest>

/** Lends what a text manager, of the base or of a device, keeps for its subclasses. */
template<typename Base>
class Opened : public Base
{
public:
    using Base::Base;
    using Base::m_LanguageMap;
    using Base::m_Mutex;
    using Base::m_ShortLanguageMap;
};

class OpenTextManager : public Opened<TextManagerBase>
{
public:
    using Opened::Opened;

    /** Reloads: that leaves, and warns of, what another text manager finds that reads the files for
     * the first time. */
    void reloadAndCompare(const LanguageFiles& files, WarningCapture& capture)
    {
        capture.take();
        reloadLanguage();
        const QStringList warnings = capture.take();
        const OpenTextManager fresh(files.path(), "de_DE", "short");
        QCOMPARE(warnings, capture.take());
        for (const QString& language : fresh.m_LanguageMap.keys())
            QCOMPARE(m_LanguageMap[language], fresh.m_LanguageMap[language]);
        for (const QString& language : fresh.m_ShortLanguageMap.keys())
            QCOMPARE(m_ShortLanguageMap[language], fresh.m_ShortLanguageMap[language]);
    }
};
