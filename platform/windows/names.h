// Names on Windows: from drive paths to native ones and back. Windows itself ignores case.
#pragma once

#include "platform/drives.h"

#include <map>
#include <string>
#include <string_view>

namespace kiv {

class WindowsNames {
  public:
    /// A drive in `drives` stands for its folder; all others are the machine's own.
    explicit WindowsNames(const DriveMap& drives);

    /// Whether a path is longer than Windows can take.
    bool IsTooLong(std::string_view absolute) const;

    /// The native path of an absolute drive path. It may be long, and its names are taken as
    /// written; for references a folder may have to be looked through, which throws "cannot look
    /// at …" when that fails.
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
