#pragma once

#include "TextChecks.h"

// The checks that compare a text with that of the base. Each adds what it finds.

void findOtherPlaceholders(const TextToCheck& text, TextFindings& findings);
void findOtherMarkup(const TextToCheck& text, TextFindings& findings);
void findOtherData(const TextToCheck& text, TextFindings& findings);
void findOtherLineBreaks(const TextToCheck& text, TextFindings& findings);
void findOtherEndMark(const TextToCheck& text, TextFindings& findings);
void findCopyOfBase(const TextToCheck& text, TextFindings& findings);
