// Looks at files and folders of Windows. Paths are native and absolute; every function gives 0 or
// an error number of Windows unless it says otherwise.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace kiv {

class WindowsHandle;

/// An error that says that a name, or a folder on the way to it, is not there.
bool IsMissing(unsigned long error);

/// The same, or that there can be no such name.
bool IsAbsent(unsigned long error);

/// An error that says that a name is not free.
bool IsTaken(unsigned long error);

/// What is known of a file or folder without reading it.
struct WindowsState {
    std::uint64_t size = 0;
    std::int64_t written = 0; // 100 ns ticks
    std::int64_t made = 0;    // the same
    unsigned long attributes = 0;
    bool is_folder = false;
};

/// A link is followed, or it is the link itself that is looked at.
unsigned long StateOf(const std::wstring& native, WindowsState& state);
unsigned long StateOfName(const std::wstring& native, WindowsState& state);

/// 0 when a folder is there; ERROR_DIRECTORY when it is something else.
unsigned long LookForFolder(const std::wstring& native);

/// The one path of what is there, without links, in the case that it has on the disk.
unsigned long FindFinalPath(std::wstring& native);
/// The same of what is open.
unsigned long FinalPathOf(const WindowsHandle& target, std::wstring& path);
/// Where a link leads. What is no link stays, and what leads to nothing.
unsigned long FollowLink(std::wstring& native);

/// One name in a folder.
struct WindowsName {
    std::wstring native;
    bool is_folder = false;
};

/// Calls `take` for every name in a folder but "." and "..", until it returns false.
unsigned long ForEachName(const std::wstring& folder,
                          const std::function<bool(const WindowsName&)>& take);

} // namespace kiv
