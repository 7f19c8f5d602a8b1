#pragma once

#include <QString>
#include <QStringList>

/**
 * " Did you mean A or B?" with the names most like @p name, the nearest first, three at most; empty
 * when none is near enough to have been meant, or when it is itself one of them.
 *
 * Upper and lower case count as alike. For text URLs a like last key counts as near, too: Save is
 * near to Menu/Save.
 */
QString suggestNames(const QString& name, const QStringList& names);
