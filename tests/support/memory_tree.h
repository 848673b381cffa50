// A tree of folders and files in memory, with names as a POSIX system has them: any bytes.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace kiv::test {

/// A file or a folder.
struct MemoryNode {
    bool is_folder = false;
    std::string bytes;        // of a file
    std::int64_t changed = 0; // of a file: grows with every change
    std::map<std::string, std::unique_ptr<MemoryNode>, std::less<>> nodes; // of a folder, by name
};

/// The name in a folder that counts as `name` (Windows-1252): as it is written, else the one that
/// is the same when case is ignored, of the same text before others, the first in byte order. The
/// name as written when there is none.
std::string NativeNameIn(const MemoryNode& folder, std::string_view name);

/// What bears a native name in a folder; null when nothing does.
MemoryNode* NodeIn(const MemoryNode& folder, std::string_view native);

/// A folder in a folder, made when it is missing; null when a file bears the name.
MemoryNode* FolderIn(MemoryNode& folder, std::string_view native);

} // namespace kiv::test
