// Locks on folders of a POSIX file system.
#pragma once

#include "platform/files.h"

#include <memory>
#include <string>

namespace kiv {

/// Waits for the lock on a folder; null when somebody else holds it all the time. Where the file
/// system has no locks, or the folder may not be opened, the lock that is given holds nothing.
std::unique_ptr<FolderLock> LockPosixFolder(const std::string& folder);

} // namespace kiv
