#pragma once

#include "TextChecks.h"

/**
 * Adds what is wrong with a text that is a message with plurals, choices or formats: its pattern,
 * and forms that its language needs. Where the add-on for messages is not built, nothing is looked
 * for.
 */
void findMessageFaults(const TextToCheck& text, TextFindings& findings);
