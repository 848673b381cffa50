// A folder of pages that somebody made by other means: what is in it, and what of it cannot be
// taken.
#pragma once

#include "platform/machine.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A page as it is. The views belong to `bytes`.
struct FoundPage {
    std::string name; // as seen from the folder, "sub/a.html"
    std::string bytes;
    std::vector<std::string_view> lines; // without their ends
};

/// A file or folder that is not taken, and why, in words that go on from its name.
struct LeftOut {
    std::string name; // as seen from the folder
    std::string why;
};

struct OldSite {
    std::string folder;              // absolute drive path
    std::vector<FoundPage> pages;    // by folder, then in the order of their upper-cased names
    std::vector<std::string> others; // what stands beside them, as seen from the folder
    std::vector<LeftOut> left_out;
};

/// Whether a native path is that of a folder or lies below it, both as the machine has them.
bool IsAtOrBelow(std::string_view path, std::string_view folder);

/// Whether a page list can write a page of this name; it ends in ".htm", ".html" or ".asp".
bool CanBeWritten(std::string_view name);

/// The lines of a text, without their ends. LF ends a line and a CR right before it goes with it.
std::vector<std::string_view> LinesOf(std::string_view text);

/// Reads every page of a folder and of those below it, and lists what is there besides. Links that
/// lead out of the folder are not followed, for what they lead to may be nobody's page. Throws
/// RunError of kind `file` for what cannot be read.
OldSite ReadOldSite(Machine& machine, const std::string& folder);

} // namespace kiv
