// The drives as the environment sets them.
#pragma once

#include "cli/run_cli.h"
#include "platform/drives.h"

#include <optional>
#include <string>

namespace kiv {

/// The drive map: `drive_c` (native folder, may be relative) or KIV_DRIVE_C or the user's data
/// folder for C:, and KIV_DRIVE_X for any other letter X but Z.
DriveMap DrivesFrom(const CliSurroundings& around, const std::optional<std::string>& drive_c);

/// Makes the folder of drive C: with its utilities folder when it is missing.
void MakeDriveC(const DriveMap& drives);

} // namespace kiv
