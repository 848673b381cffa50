// Bang macros: "!!pop[", "!!showhide[", "!!flv[", "!!mailto[", "!!SWAP[", "!!flash[". Each expander
// rewrites the first occurrence of its macro in the line, whatever its case, and leaves a line
// without one as it is. A missing field throws RunError `subscript`.
#pragma once

#include "builder/build_messages.h"
#include "platform/addresses.h"

#include <string>

namespace kiv {

/// What the bangs of one page leave behind; new with each page.
struct PageBangs {
    int PopupCounter = 0;    // simple popups so far
    std::string ShowHideIds; // "id","id" of the show/hide sections so far
};

void ExpandPopup(std::string& line, PageBangs& page, BuildMessages& messages);
void ExpandShowHide(std::string& line, PageBangs& page, BuildMessages& messages);
void ExpandFlv(std::string& line, const Addresses& addresses, BuildMessages& messages);
void ExpandMailto(std::string& line, BuildMessages& messages);
void ExpandSwap(std::string& line, BuildMessages& messages);
void ExpandFlash(std::string& line, const Addresses& addresses, BuildMessages& messages);

/// Appends the script that the page's show/hide toggles call, when there are any, and empties their
/// list.
void WriteShowHideScript(std::string& output, PageBangs& page);

} // namespace kiv
