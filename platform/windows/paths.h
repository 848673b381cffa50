// Native paths of Windows. But for ProcessPath nothing here asks the system.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// The folder and the name in a native path, and a path of these.
std::wstring NativeFolderOf(std::wstring_view native);
std::wstring NativeNameOf(std::wstring_view native);
std::wstring InNativeFolder(std::wstring folder, std::wstring_view name);

/// The path in upper case, by which those of one file are the same: Windows ignores case.
std::wstring UpperCaseOf(const std::wstring& native);

/// The full form of a path by the process's own directories, one for each drive.
std::wstring ProcessPath(const std::wstring& path);

/// The path without separators at its end.
std::wstring WithoutSeparator(std::wstring path);

/// A full path in the form that may be long, and whose names are taken as written: "\\?\D:\folder".
std::wstring LongForm(const std::wstring& full);
/// The same path as other programs want it: without what makes it long.
std::wstring PlainForm(const std::wstring& native);

} // namespace kiv
