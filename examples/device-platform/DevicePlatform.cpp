#include "PropertyManagerConst.h"

QString PropertyManagerConst::getLanguageFileExtension()
{
    return QStringLiteral("lang");
}
