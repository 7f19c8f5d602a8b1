#pragma once

#include <QString>
#include <QStringList>

/**
 * The names most like @p name, the nearest first, three at most; none that is too far off to have
 * been meant. Upper and lower case count as alike. For text URLs a like last key counts as near,
 * too: Save is near to Menu/Save.
 */
QStringList findNearestNames(const QString& name, const QStringList& names);

/** " Did you mean A or B?" with the names nearest to @p name; empty when none is near, or when it
 * is itself one of them. */
QString suggestNames(const QString& name, const QStringList& names);
