#pragma once

#include <QString>
#include <QStringList>

/**
 * The names most like @p name, the nearest first, three at most; none that is too far off to have
 * been meant. Upper and lower case count as alike. For text URLs a like last key counts as near,
 * too: Save is near to Menu/Save.
 */
QStringList findNearestNames(const QString& name, const QStringList& names);
