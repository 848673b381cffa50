// Timelines: "<zutimeline1>", one event a line, label and text parted by "|".
#pragma once

#include "blocks/dispatcher.h"

#include <string>
#include <string_view>

namespace kiv {

/// A line that begins so ends a timeline.
inline constexpr std::string_view kTimelineEnd = "</zutimeline";

/// Reads a timeline up to "</zutimeline" and puts the finished table into `line`. When the block
/// runs into an "@" line or a line without "|", that is reported and `line` holds that line.
void zutimeline(std::string& line, BlockContext& context);

} // namespace kiv
