// Native paths of Windows, and whether anything is there.
#pragma once

#include <string>

namespace kiv {

/// Whether there is a file or a folder of this native path, and whether it is a folder.
bool IsThere(const std::wstring& native);
bool IsFolder(const std::wstring& native);

/// The full form of a path by the process's own directories, one for each drive.
std::wstring ProcessPath(const std::wstring& path);

/// The path without separators at its end.
std::wstring WithoutSeparator(std::wstring path);

/// A full path in the form that may be long, and whose names are taken as written: "\\?\D:\folder".
std::wstring LongForm(const std::wstring& full);
/// The same path as other programs want it: without what makes it long.
std::wstring PlainForm(const std::wstring& native);

} // namespace kiv
