// Names on Windows: from drive paths to native ones and back. Windows itself ignores case.
#pragma once

#include "platform/drives.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace kiv {

/// One name in a folder.
struct WindowsName {
    std::wstring native;
    bool is_folder = false;
};

/// Calls `take` for every name in a native folder but "." and "..", until it returns false. 0 or an
/// error number of Windows.
unsigned long ForEachName(const std::wstring& folder,
                          const std::function<bool(const WindowsName&)>& take);

class WindowsNames {
  public:
    /// A drive in `drives` stands for its folder; all others are the machine's own.
    explicit WindowsNames(const DriveMap& drives);

    /// The native path of an absolute drive path. It may be long; its names are kept as written.
    std::wstring Native(std::string_view absolute) const;
    /// The same where the last name is to be new: it is taken as written.
    std::wstring NativeOfNew(std::string_view absolute) const;
    /// The native path as other programs want it: without what makes it long.
    std::wstring Plain(std::string_view absolute) const;

    /// A path from outside as an absolute drive path; empty when no drive leads there. `current`:
    /// this program's current directory.
    std::string FromNative(std::string_view utf8, std::string_view current) const;

    std::string Letters() const;

  private:
    struct Mapped {
        std::wstring native; // "\\?\D:\folder"
        std::string text;    // "D:\folder"; empty when it lies on no drive
    };

    std::wstring Root(char letter) const;
    /// The drive path that leads through a mapped drive to the same place; empty when none does.
    std::string ThroughMapped(const std::string& absolute) const;

    std::map<char, Mapped> mapped_;
};

} // namespace kiv
