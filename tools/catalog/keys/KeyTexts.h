#pragma once

#include "KeyTree.h"

class LanguageFolder;

/** The texts that have constants: those of the base language and of POSIX, in the order of their
 * URLs. What only another language has is a mistake there. */
QVector<KeyText> keyTextsOf(const LanguageFolder& folder, const QString& baseLanguage);
