#pragma once

#include <QByteArray>
#include <QStringList>

/** What a run of the program textmanager writes to a terminal, its results and its messages. */
QByteArray outputOnTerminal(const QStringList& arguments);
