// Temporary files on Windows.
#pragma once

#include <string>

namespace kiv {

/// A name of this process, beside `native`, that was not used before.
std::wstring TemporaryName(const std::wstring& native);

/// Deletes what runs have left in a native folder that were killed. What a living process has there
/// stays.
void DeleteLeftTemporaries(const std::wstring& folder);

} // namespace kiv
