#pragma once

#include "CheckSettings.h"
#include "Description.h"
#include "ExchangeFormat.h"

#include <QString>

class CommandLine;

// What the commands share by which texts travel.

/** "--as FORMAT" */
OptionDescription asOption();
/** "--base KEY" */
OptionDescription baseOption();

/** The settings of a folder, with --base and --short-folder above them. */
CheckSettings settingsOf(const CommandLine& commandLine, const QString& folderPath);

/**
 * The format that --as names or, without it, the extension of @p path.
 *
 * @return null, after a message, when neither tells one.
 */
const ExchangeFormat* chooseFormat(const CommandLine& commandLine, const QString& path);
