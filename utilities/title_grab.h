// Title grab: makes a starting page list, "grabtitles.txt", from a folder of existing web pages.
#pragma once

#include "platform/machine.h"

namespace kiv {

/// What of a page goes into the list besides its name and title. "Grab all" sets the first, "Grab
/// all trimmed" both. They outlive a run that writes nothing; every writing clears them.
struct GrabFlags {
    bool grab_all = false;     // the page's lines
    bool grab_trimmed = false; // of these only the lines inside the body
};

/// Lists the HTML pages of the current directory, then its ASP pages, in "grabtitles.txt", each
/// with its title and, when `with_redirect`, a redirect line. A folder without pages gets a message
/// and no file. Throws RunError: `subscript` for a 1001st page, `invalid_argument` for a title that
/// ends before it begins.
void grab_titles(Machine& machine, bool with_redirect, GrabFlags& flags);

} // namespace kiv
