// Looks for all that is wrong in a site.
#pragma once

#include "inspect/finding.h"
#include "inspect/site_view.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// Which findings are looked for, by name.
struct FindingChoice {
    std::set<std::string, std::less<>> only; // empty: all
    std::set<std::string, std::less<>> without;

    bool Takes(std::string_view name) const;
};

/// The findings, by file, line and page. What one source line does to many pages is one finding.
std::vector<Finding> Inspect(const SiteView& site, const FindingChoice& choice);

} // namespace kiv
