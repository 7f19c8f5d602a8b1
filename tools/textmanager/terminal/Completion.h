#pragma once

#include <QString>
#include <QStringList>

/**
 * What a shell may offer for the last of the words behind "textmanager", which is unfinished or
 * empty: a candidate a line, and behind a tab what it is. ":files" and ":folders" stand for those
 * of the shell.
 */
QString completionsOf(const QStringList& words);
