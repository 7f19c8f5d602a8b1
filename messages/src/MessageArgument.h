#pragma once

#include <QVariant>

#include <unicode/fmtable.h>

/**
 * Makes of a value what ICU fills in: a number, a string or a date.
 *
 * @return whether it could: not for an invalid date, and not for what has no form as a string.
 */
bool toFormattable(const QVariant& value, icu::Formattable& formattable);
