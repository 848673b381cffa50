// The pages that a folder's page list names, and in a group those of every member: for a face that
// shows them. Nothing is built and nothing is written.
#pragma once

#include "builder/page_listing.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kiv {

class Workspace;

/// What the last build did with a page.
enum class PageFate { unknown, made, changed, same, unwritten };

struct SitePage {
    ListedPage listed;
    int covered_by = 0; // the number of a later page at the same path; 0: there is none
    PageFate fate = PageFate::unknown;
    std::string reason = {}; // why it was not written
    int warnings = 0;        // that the last build had of it
};

struct SiteSection {
    std::string name;   // its folder's, as the group list has it; of the working directory the last
                        // name of its path
    std::string folder; // absolute drive path, ends in "\"
    std::vector<SitePage> pages;
    std::string trouble; // why there are no pages, as a sentence; "": all went well
};

struct SitePages {
    bool is_group = false;
    std::vector<SiteSection> sections; // the working directory first, if it is one

    std::size_t Count() const;
};

/// Reads the lists of the working directory, without a word to the user. Never throws RunError.
SitePages ReadSitePages(Workspace& workspace);

/// "new", "changed", "as it was", "not written: REASON"; "" when no build has told.
std::string FateText(const SitePage& page);

} // namespace kiv
