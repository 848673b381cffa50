// Temporary files on a POSIX file system.
#pragma once

#include <string>

namespace kiv {

/// A name of this process, beside `native`, that was not used before.
std::string TemporaryName(const std::string& native);

/// Deletes what runs have left in a folder that were killed. What a living process has there stays.
void DeleteLeftTemporaries(const std::string& folder);

} // namespace kiv
