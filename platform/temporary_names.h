// The names under which files are written before they get their places: ".kiv-PROCESS-NUMBER.tmp".
// And those under which a draft changes places with a file, ".kiv-PROCESS-NUMBER-OLD-NEW-NAME.tmp":
// what lies there in the end may be somebody else's.
#pragma once

#include "platform/site_files.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// A name for this process, whose number it is told, that was not used before.
std::string NewTemporaryName(int process);

/// A number that tells a content from others.
std::uint64_t MarkOf(std::string_view content);

/// What the name of a swap tells.
struct SwapName {
    std::string_view name;    // of the file; a long one is cut
    std::uint64_t old_mark;   // of the content that the file had
    std::uint64_t draft_mark; // of the one that it was to get
};

/// A name for this process under which the draft of a file changes places with it.
std::string NewSwapName(int process, std::string_view name, std::string_view old_content,
                        std::string_view draft);

/// None when `temporary` is no such name.
std::optional<SwapName> ReadSwapName(std::string_view temporary);

/// The number of the process that a name of either kind tells of; 0 when it is no such name.
int ProcessOfTemporary(std::string_view name);

/// Whether a name without folders is one that this program has for itself, of this process or any
/// other: no listing has it.
inline bool IsOwnName(std::string_view name)
{
    return name == kRenameJournalFile || ProcessOfTemporary(name) != 0;
}

} // namespace kiv
