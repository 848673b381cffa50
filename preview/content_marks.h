// What tells the content of served files and folders from what it was.
#pragma once

#include "platform/former_files.h"
#include "platform/native_files.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace kiv {

/// What is longer is told by its stamp alone, and is sent in parts, as it lies on the disk.
inline constexpr std::uint64_t kLargestText = 4'000'000;

/// The content of a file now; nothing when it cannot be read, or is too long.
std::optional<ContentMark> MarkOfFile(const std::string& native);

/// A folder's shown names now; nothing when it cannot be listed.
std::optional<ContentMark> MarkOfFolder(const std::string& native);
ContentMark MarkOfNames(std::span<const NativeEntry> names);

/// Whether a name is shown to browsers.
bool IsShownName(std::string_view name);

} // namespace kiv
