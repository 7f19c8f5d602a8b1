#pragma once

#include <QString>

struct PropertyManagerConst {
    static QString getLanguageFileExtension();
};
