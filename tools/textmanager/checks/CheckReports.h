#pragma once

#include "FolderCheck.h"

#include <QJsonObject>
#include <QString>

// What a check found, in the ways it is told.

/** The findings and the languages as one object. */
QJsonObject toJson(const CheckResult& result);

/** A log of SARIF 2.1.0. Places are relative to the folder, which is named once. */
QJsonObject toSarif(const CheckResult& result, const QString& folderPath);

/** For people: findings by file, and a table of languages; without the last line break. */
QString toText(const CheckResult& result, const CheckSettings& settings, bool isColoured);

/** A page for a browser that needs nothing beside it. @param title what is checked. */
QByteArray toHtml(const CheckResult& result, const LanguageCatalog& catalog,
                  const CheckSettings& settings, const QString& title);
