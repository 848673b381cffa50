// Native paths as they are told to who stands in a folder.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

class NativePaths;

/// A native path as seen from a native folder: relative where it lies in it, "." for the folder
/// itself, else as it is. An empty folder holds nothing. Both in the form that ToNative gives.
std::string SeenFrom(std::string_view folder, const std::string& native);

/// The native form of a drive path, or the drive path in UTF-8 where no drive leads there.
std::string NativeOrDrive(NativePaths& paths, std::string_view path);

/// The folder of the shell in the form that ToNative gives. `directory`: native; empty: the
/// process's. Empty when no drive leads there.
std::string ShellFolder(NativePaths& paths, const std::string& directory);

} // namespace kiv
