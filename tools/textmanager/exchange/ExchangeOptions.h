#pragma once

#include "Description.h"
#include "ExchangeFormat.h"

#include <QString>

class CommandLine;

// What the commands share by which texts travel.

/** "--as FORMAT" */
OptionDescription asOption();
/** "--base KEY" */
OptionDescription baseOption();

/**
 * The format that --as names or, without it, the extension of @p path.
 *
 * @return null, after a message, when neither tells one.
 */
const ExchangeFormat* chooseFormat(const CommandLine& commandLine, const QString& path);
