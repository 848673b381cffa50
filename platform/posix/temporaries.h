// The names under which files are written before they get their places: ".kiv-PROCESS-NUMBER.tmp".
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// A name of this process, beside `native`, that was not used before.
std::string TemporaryName(const std::string& native);

/// Whether a name without folders is one of ours, of this process or any other.
bool IsTemporaryName(std::string_view name);

/// Deletes what runs have left in a folder that were killed. What a living process has there stays.
void DeleteLeftTemporaries(const std::string& folder);

} // namespace kiv
