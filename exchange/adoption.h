// A site made of pages that were there before, such that building it gives them back.
#pragma once

#include "exchange/adopted_sources.h"
#include "exchange/old_site.h"
#include "exchange/page_comparison.h"
#include "exchange/page_order.h"
#include "platform/machine.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// What became of a page.
struct AdoptedPage {
    std::string name;     // as seen from the folder that it came from
    std::string section;  // the folder of its page list, as seen from the new one; "": itself
    std::string_view way; // one of the words of WayWords, or "copied"
    PageComparison comparison;
    std::string why; // it did not go in another way; "": it went in the first one
};

struct Adoption {
    std::string folder; // absolute drive paths
    std::string target;
    std::vector<AdoptedPage> pages;    // in the order of their lists
    std::vector<std::string> sections; // folders of page lists, as seen from the target; "": itself
    std::vector<LeftOut> left_out;
    OrderedBy ordered_by = OrderedBy::names; // of the first section
    std::size_t others = 0; // files that were copied because they stand beside the pages
};

/// "template", "shared", "naked", "as it is".
std::string_view WayWords(Way way);

/// Throws RunError of kind `invalid_argument` where no site can be made of `folder` in `target`:
/// it holds something, or one lies in the other. Looks only.
void RefuseTarget(Files& files, const std::string& folder, const std::string& target);

/// Reads the pages of `folder`, writes the sources of a site into `target`, which is there and
/// empty, and copies what stands beside the pages. Every page was built in memory from these
/// sources and compared with the old one. Tells the reporter: the status, the pages that differ,
/// what was left out. Both are absolute drive paths. Throws RunError of kind `file` for what cannot
/// be read or written; nothing in `folder` is touched.
Adoption AdoptSite(Machine& machine, const std::string& folder, const std::string& target);

} // namespace kiv
