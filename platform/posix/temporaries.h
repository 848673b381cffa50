// Temporary files on a POSIX file system.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A name of this process, beside `native`, that was not used before.
std::string TemporaryName(const std::string& native);

/// The same under which a draft changes places with the file `native`.
std::string TemporarySwapName(const std::string& native, std::string_view old_content,
                              std::string_view draft);

/// Deletes what runs have left in a folder that were killed. What a living process has there stays.
/// So does what was swapped out of its place and is neither what the run had read nor its draft:
/// somebody else's work, which gets a name of its own. Returns these names, native.
std::vector<std::string> DeleteLeftTemporaries(const std::string& folder);

} // namespace kiv
