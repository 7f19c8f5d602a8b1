#pragma once

#include "LanguageFiles.h"

#include "TextManager.h"

#include <QDir>

/** The text A in four languages, named by them, and a short one. */
class DeviceFiles : public LanguageFiles
{
public:
    DeviceFiles()
    {
        for (const QByteArray key : {"de_DE", "en_US", "fr_FR", "ja_JP"})
            writeText(key, key);
        writeText("short/de_DE", "short");
        // Without a status display a text manager looks there for short texts.
        QDir::setCurrent(path() + "short");
    }
};

inline QString currentText(const TextManager& manager)
{
    return manager.getText("A", QString());
}
