#pragma once

#include <QString>

#include <optional>

/** What the device's manifest tells of its status display. */
struct StatusDisplay {
    bool isAvailable = false;
    QString folder;
};

/**
 * Reads the manifest file, which TEXTMANAGER_MANIFEST names: without it, it is
 * /etc/textmanager/manifest.json.
 *
 * @return nothing where the file does not tell: it is not there, or has no "statusDisplay"; also
 * after a warning, with line and column or the place within the file, that it cannot be used.
 */
std::optional<StatusDisplay> readStatusDisplayFromFile();
