// The names under which files are written before they get their places: ".kiv-PROCESS-NUMBER.tmp".
#pragma once

#include "platform/site_files.h"

#include <string>
#include <string_view>

namespace kiv {

/// A name for this process, whose number it is told, that was not used before.
std::string NewTemporaryName(int process);

/// The number of the process that a temporary name tells of; 0 when it is no such name.
int ProcessOfTemporary(std::string_view name);

/// Whether a name without folders is one that this program has for itself, of this process or any
/// other: no listing has it.
inline bool IsOwnName(std::string_view name)
{
    return name == kRenameJournalFile || ProcessOfTemporary(name) != 0;
}

} // namespace kiv
