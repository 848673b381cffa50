// Drives on which files that are handed over are written side by side.
#pragma once

#include "platform/drive_files_common.h"

#include <cstddef>
#include <memory>

namespace kiv {

/// By so many threads as MakeDriveFiles says. Where that is one, these are `drives` themselves:
/// each file is written when it is handed over then.
std::unique_ptr<Drives> WithPageQueue(std::unique_ptr<DriveFiles> drives, std::size_t threads);

} // namespace kiv
