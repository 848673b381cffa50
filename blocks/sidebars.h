// Side bars: text in a floating coloured box, "<zusidebar1>" to "<zusidebar6>".
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// How the end tag of every side bar begins.
inline constexpr std::string_view kSidebarEnd = "</zusidebar";

/// Opens the box at the first "<zusidebar" of `line`, and closes it when the end tag stands on the
/// same line.
void zusidebar(std::string& line, std::string_view align, std::string_view width);

} // namespace kiv
