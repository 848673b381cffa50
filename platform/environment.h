// The drives as the environment sets them.
#pragma once

#include "platform/drives.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kiv {

/// The value of an environment variable (UTF-8), if it is set.
using Variables = std::function<std::optional<std::string>(const char* name)>;

/// The drive map: `drive_c` (native folder, may be relative) or KIV_DRIVE_C or, where the machine
/// has no drives, the user's data folder for C:, and KIV_DRIVE_X for any other letter X but Z.
DriveMap DrivesFrom(const Variables& variable,
                    const std::optional<std::string>& drive_c = std::nullopt);

/// The native folder in which the program keeps its own records for this user; empty: none.
std::string RecordsFolderFrom(const Variables& variable);

/// The native file that keeps the folders that were worked in last; empty when the environment
/// names no place for it.
std::string RecentFileFrom(const Variables& variable);

/// The native folders in which Windows keeps the programs of the machine and of this user; others
/// have none.
std::vector<std::string> ProgramFoldersFrom(const Variables& variable);

/// Makes the folder that stands for drive C: with its utilities folder when it is missing.
void MakeDriveC(const DriveMap& drives);

} // namespace kiv
