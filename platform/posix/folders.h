// Folders of a POSIX file system. A function that gives an int gives 0 or an error number.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace kiv {

/// An error that says that a name, or a folder on the way to it, is not there.
bool IsMissing(int error);

/// The same, or that there can be no such name.
bool IsAbsent(int error);

/// 0 when a folder is there; ENOTDIR when it is something else.
int LookForFolder(const std::string& native);

/// Calls `take` for each name but "." and ".." with its type: DT_REG, DT_DIR, … or DT_UNKNOWN.
using TakeName = std::function<void(std::string_view name, unsigned char type)>;
int ForEachName(const std::string& folder, const TakeName& take);

/// The same, and tells which folder it was: two paths may lead to one. `skip(state)` may spare the
/// reading.
using SkipFolder = std::function<bool(const struct stat& state)>;
int ForEachName(const std::string& folder, const SkipFolder& skip, const TakeName& take);

/// Whether the disk of a folder may keep what is wrong with a file's content to itself until the
/// file is closed, as servers do. Disks of the machine's own that are known tell it at once.
bool TellsAtClosing(const std::string& folder);

} // namespace kiv
