#pragma once

#include <QVariant>

/** @p value without the types of D-Bus: variants are unwrapped, arrays (also of bytes or texts) and
 * structures become lists, dictionaries maps, integers below 32 bits int. It can be read once. */
QVariant toPlainValue(const QVariant& value);
