#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/** Has Qt take arguments, file names and output for UTF-8 also where the device sets no locale. To
 * be called before there is a QCoreApplication. */
void useUtf8Everywhere();

/** Decodes UTF-8, in which a byte-order mark is a character too; nothing when it is none. */
std::optional<QString> decodeUtf8(const QByteArray& bytes);

/** The bytes behind the mark that spreadsheets put before UTF-8. */
QByteArray withoutByteOrderMark(const QByteArray& bytes);
