#pragma once

#include <QByteArray>
#include <QStringList>

/**
 * What a run of the program textmanager writes to a terminal, its results and its messages.
 *
 * @param input less than a pipe holds
 */
QByteArray outputOnTerminal(const QStringList& arguments, const QByteArray& input);
