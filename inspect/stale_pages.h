// Pages that a former page list has left in the folders of a section.
#pragma once

#include <string>
#include <vector>

namespace kiv {

struct SiteView;

/// Their absolute drive paths; none where the links of the pages are not known, nor where the build
/// ended in an error or made a single page.
std::vector<std::string> StalePages(const SiteView& site);

} // namespace kiv
