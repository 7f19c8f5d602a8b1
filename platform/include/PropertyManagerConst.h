#pragma once

#include "ReferencePlatformExport.h"

#include <QString>

/** Names that the device's property manager fixes for the files that it shares. */
class REFERENCEPLATFORM_EXPORT PropertyManagerConst
{
public:
    PropertyManagerConst() = delete;

    /** The extension of language files, without a dot: "json". */
    static const QString& getLanguageFileExtension();
};
