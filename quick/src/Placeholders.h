#pragma once

#include <QString>
#include <QVariantMap>

class QLocale;

/** The arguments of plain Qt texts: `%1` to `%99`, each named by its number. */
namespace Placeholders
{

/** The first name of an argument that is no number from 1 to 99; null when all are. */
QString findOtherName(const QVariantMap& arguments);

/**
 * @p text with each placeholder that has an argument replaced by it, numbers as @p locale writes
 * them. What a value brings in is not looked at again.
 */
QString replace(const QString& text, const QVariantMap& arguments, const QLocale& locale);

} // namespace Placeholders
