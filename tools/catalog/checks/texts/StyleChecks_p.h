#pragma once

#include "TextChecks.h"

// The checks that look at one text. What the base's text has as well is a matter of the base.

void findEdgeSpace(const TextToCheck& text, TextFindings& findings);
void findDoubleSpace(const TextToCheck& text, TextFindings& findings);
void findInvisibleCharacter(const TextToCheck& text, TextFindings& findings);
void findRepeatedWord(const TextToCheck& text, TextFindings& findings);
void findTooLongText(const TextToCheck& text, TextFindings& findings);
