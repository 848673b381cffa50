// The end of a run that has no memory left.
#pragma once

#include <string_view>

namespace kiv {

/// What such a run says, as text for standard error or as a JSON report for standard output.
std::string_view NoMemoryText(bool json);

/// From here on a want of memory that can be caught nowhere ends the process with that text and
/// exit code 1: a library may let no exception out of what asks for memory, and then the run ends
/// as if by a crash. `count` and `arguments` are those of main.
void EndWellWithoutMemory(int count, const char* const* arguments);

} // namespace kiv
