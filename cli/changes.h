// What a build did to its files: how many it changed, and which.
#pragma once

#include "platform/files.h"

#include <cstddef>
#include <iosfwd>
#include <span>
#include <string>
#include <vector>

namespace kiv {

class NativePaths;

/// How many files were written, each counted once, and how many of them are others now.
struct ChangeCount {
    std::size_t written = 0;
    std::size_t changed = 0;
};
ChangeCount CountChanges(std::span<const WrittenFile> files);

/// "3 of 412 files changed".
std::string ChangeWords(const ChangeCount& count);

/// The native paths of the files that changed, each once, in the order of their first closing;
/// those in the folder, a drive path, relative to it.
std::vector<std::string> ChangedPaths(std::span<const WrittenFile> files, NativePaths& paths,
                                      const std::string& folder);

/// One path a line, or each ended by NUL: byte for byte, but where it is shown on a terminal
/// nothing steers it.
void PrintPaths(std::ostream& out, const std::vector<std::string>& paths, bool ends_in_nul,
                bool is_terminal);

} // namespace kiv
