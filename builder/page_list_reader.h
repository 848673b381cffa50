// Reads `_html.txt` and its "++" includes into one list of source lines: comments, "@@stop" and
// "@@EOY" stretches are gone, block tags expanded.
#pragma once

#include <string_view>

namespace kiv {

// Lines that begin so, in any case, switch stretches of the page list off and on.
inline constexpr std::string_view kStopSwitch = "@@stop";
inline constexpr std::string_view kStartSwitch = "@@start";
inline constexpr std::string_view kYearEndSwitch = "@@EOY";

struct Build;

/// Fills SourceLines and SourceLineCount. A missing include or "@@start" is reported and ends the
/// read there. Throws `subscript` past 40000 lines and `file` when a "++" file leaves "@@EOY" open.
void ReadPageList(Build& build);

} // namespace kiv
