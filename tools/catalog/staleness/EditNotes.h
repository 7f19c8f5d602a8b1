#pragma once

#include "BaseTextRecord.h"

#include <QJsonObject>
#include <QString>

/**
 * Keeps the record of a language folder when the document of @p language is edited, and begins it
 * when that is the base, in which a text is replaced.
 *
 * @param fault receives why the base cannot be read, where that is needed, with its place.
 */
void noteEdit(const QString& folderPath, const QString& language, const QJsonObject& before,
              const QJsonObject& after, BaseTextRecord& record, QString& fault);
