#include "PropertyManagerConst.h"

const QString& PropertyManagerConst::getLanguageFileExtension()
{
    static const QString extension = QStringLiteral("json");
    return extension;
}
