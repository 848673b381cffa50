// The files that a build has written into a site's folder: finding them, removing them, telling
// which are new.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace kiv {

struct Output {
    std::string name;
    std::uintmax_t size = 0;
    std::uintmax_t inode = 0; // with `changed` 0 in an entry that comes from a list
    std::int64_t changed = 0; // time of the last change in nanoseconds

    bool operator==(const Output&) const = default;
};

/// All files of `dir` but the two sources, by name.
std::vector<Output> FindOutputs(const std::filesystem::path& dir);

/// A list as kiv-bench-floor writes it. Throws std::runtime_error when there is nothing to read.
std::vector<Output> ReadOutputList(const std::filesystem::path& list);

/// Removes the files of these names from `dir`; a missing one is no error.
void RemoveOutputs(const std::filesystem::path& dir, const std::vector<Output>& outputs);

/// Gives each of these files another first byte, so that the next run replaces it. Throws
/// std::ios_base::failure when one cannot be written.
void SpoilOutputs(const std::filesystem::path& dir, const std::vector<Output>& outputs);

/// The sum of the sizes of those files in `after` that are new or were written again since `before`
/// was found.
std::uintmax_t BytesWritten(const std::vector<Output>& before, const std::vector<Output>& after);

} // namespace kiv
