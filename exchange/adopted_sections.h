// How the pages of a folder are parted into page lists.
#pragma once

#include "exchange/old_site.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kiv {

/// The pages of one list.
struct SectionPages {
    std::string folder;             // of the list, as seen from the site's: "", "sub", "_part2"
    std::string pages_folder;       // that the names of its pages begin with: "" or "sub/"
    bool writes_above = false;      // the list lies one folder below its pages
    std::vector<std::size_t> pages; // numbers, from 0
};

/// One list where it can hold all of them; else one for each subfolder, and further ones by number
/// where even that is too much. Only pages that a list can write. The first section is the site's
/// own.
std::vector<SectionPages> PartIntoSections(const std::vector<FoundPage>& pages,
                                           const std::vector<std::size_t>& order);

} // namespace kiv
