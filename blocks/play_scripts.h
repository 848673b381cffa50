// Play scripts: "<zuplaywright>", one speech a line, speaker and speech parted by a tab.
#pragma once

#include "blocks/dispatcher.h"

#include <string>
#include <string_view>

namespace kiv {

/// A line that begins so ends a play script.
inline constexpr std::string_view kPlayEnd = "</zuplaywright>";

/// Reads a play script up to "</zuplaywright>" and puts the finished table into `line`. When the
/// block runs into an "@" line or another block, that is reported and `line` is the line last read.
void zuplaywright(std::string& line, BlockContext& context);

} // namespace kiv
