// Native paths of a POSIX system as text. Nothing here looks at a disk.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// "/a/b" and "c" joined.
std::string JoinNative(std::string_view folder, std::string_view name);

/// The folder and the name in an absolute native path.
std::string_view NativeFolderOf(std::string_view native);
std::string_view NativeNameOf(std::string_view native);

/// An absolute native path without ".", ".." and empty parts; links are not looked at.
std::string CleanNative(std::string_view native);

} // namespace kiv
