// Looks for all that is wrong in a site.
#pragma once

#include "inspect/external_links.h"
#include "inspect/finding.h"
#include "inspect/site_view.h"

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// Which findings are looked for, by name.
struct FindingChoice {
    std::set<std::string, std::less<>> only; // empty: all
    std::set<std::string, std::less<>> without;
    bool external = false; // whether the addresses on other hosts are listed

    bool Takes(std::string_view name) const;
};

/// By file, its case aside, line and page; the worst first in one line.
bool StandsBefore(const Finding& one, const Finding& other);

struct Inspection {
    std::vector<Finding> findings;      // by file, line and page; what a source line does to many
                                        // pages is one
    std::size_t switched_off = 0;       // by `_check.txt`, which leaves out none that `only` names
    std::vector<ExternalLink> external; // where the choice wants them
};

/// `between` is called between two kinds of findings, and may end it by what it throws.
Inspection Inspect(const SiteView& site, const FindingChoice& choice,
                   const std::function<void()>& between);

} // namespace kiv
