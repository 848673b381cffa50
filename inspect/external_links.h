// The addresses of a site that are on other hosts.
#pragma once

#include "inspect/site_view.h"

#include <string>
#include <vector>

namespace kiv {

struct ExternalLink {
    std::string address; // Windows-1252, as the page has it
    KeptPlace where;     // and the first page that has it from there
};

/// Those of a section's pages, by place; an address that a source line puts on many pages is there
/// once.
std::vector<ExternalLink> ExternalLinks(const SiteView& site);

} // namespace kiv
