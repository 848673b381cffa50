// Reads `_html.txt` and its "++" includes into one list of source lines: comments, "@@stop" and
// "@@EOY" stretches are gone, block tags expanded.
#pragma once

#include "text/text.h"

#include <string_view>

namespace kiv {

struct Build;

/// The line that begins and ends New Year text, and the step of the trace that takes it out.
inline constexpr std::string_view kYearEndMark = "@@EOY";

// Reasons that the trace has for lines that are left out.
inline constexpr std::string_view kNewYearOff = "New Year text, which is off";
inline constexpr std::string_view kOpenStop =
    "@@stop without a @@start behind it: reading ended here";
/// Behind the name of an include that is not there.
inline constexpr std::string_view kReadEndsHere = ": reading ended here";
inline constexpr std::string_view kReadEnded = "never read: reading the page list ended above";

/// Whether the line is such a mark. It begins with "@", which few lines do.
inline bool IsYearEnd(std::string_view line)
{
    return line.starts_with('@') && StartsWithNoCase(line, kYearEndMark);
}
// The lines between which nothing is read.
inline constexpr std::string_view kStopMark = "@@stop";
inline constexpr std::string_view kStartMark = "@@start";

/// Fills SourceLines and SourceLineCount. A missing include or "@@start" is reported and ends the
/// read there. Throws `subscript` past 40000 lines and `file` when a "++" file leaves "@@EOY" open.
void ReadPageList(Build& build);

} // namespace kiv
