// The names under which files are written before they get their places: ".kiv-PROCESS-NUMBER.tmp".
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// A name for this process, whose number it is told, that was not used before.
std::string NewTemporaryName(int process);

/// The number of the process that a temporary name tells of; 0 when it is no such name.
int ProcessOfTemporary(std::string_view name);

/// Whether a name without folders is one of ours, of this process or any other.
inline bool IsTemporaryName(std::string_view name)
{
    return ProcessOfTemporary(name) != 0;
}

} // namespace kiv
