// What the directory window shows of a folder.
#pragma once

#include "platform/machine.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

struct FolderEntry {
    std::string name; // "C:\" for a root
    std::string path; // absolute
    bool operator==(const FolderEntry&) const = default;
};

struct FolderView {
    std::string folder;             // absolute path, ends in "\" at a root only
    std::string drives;             // the drive letters there are
    std::vector<FolderEntry> above; // from the root to the folder itself
    std::vector<FolderEntry> inside;
};

/// Looks at a folder. Throws RunError of kind `file` when it is not there.
FolderView ViewFolder(const Machine& machine, std::string_view folder);

/// The files of a folder; none when it cannot be listed.
std::vector<std::string> FilesOf(const Machine& machine, std::string_view folder);

} // namespace kiv
