// What is told of bangs from one line of a page to the next.
#pragma once

#include <string>

namespace kiv {

/// What the bangs of one page leave behind; new with each page.
struct PageBangs {
    int PopupCounter = 0;    // simple popups so far
    std::string ShowHideIds; // "id","id" of the show/hide sections so far
};

} // namespace kiv
