// Bang macros: "!!pop[", "!!showhide[", "!!flv[", "!!mailto[", "!!SWAP[", "!!flash[". Each expander
// rewrites the first occurrence of its macro at or behind `from` (0-based), whatever its case, and
// leaves a line without one as it is. It returns the first character that it has changed, or npos
// when the line is as it was. A missing field throws RunError `subscript`.
#pragma once

#include "builder/build_messages.h"
#include "builder/addresses.h"

#include <cstddef>
#include <string>

namespace kiv {

/// What the bangs of one page leave behind; new with each page.
struct PageBangs {
    int PopupCounter = 0;    // simple popups so far
    std::string ShowHideIds; // "id","id" of the show/hide sections so far
};

std::size_t ExpandPopup(std::string& line, std::size_t from, PageBangs& page,
                        BuildMessages& messages);
std::size_t ExpandShowHide(std::string& line, std::size_t from, PageBangs& page,
                           BuildMessages& messages);
std::size_t ExpandFlv(std::string& line, std::size_t from, const Addresses& addresses,
                      BuildMessages& messages);
std::size_t ExpandMailto(std::string& line, std::size_t from, BuildMessages& messages);
std::size_t ExpandSwap(std::string& line, std::size_t from, BuildMessages& messages);
std::size_t ExpandFlash(std::string& line, std::size_t from, const Addresses& addresses,
                        BuildMessages& messages);

/// Appends the script that the page's show/hide toggles call, when there are any, and empties their
/// list.
void WriteShowHideScript(std::string& output, PageBangs& page);

} // namespace kiv
