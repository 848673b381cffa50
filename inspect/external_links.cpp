#include "inspect/external_links.h"

#include "inspect/addresses.h"
#include "inspect/page_links.h"
#include "text/windows1252.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace kiv {

std::vector<ExternalLink> ExternalLinks(const SiteView& site)
{
    std::vector<ExternalLink> found;
    std::set<std::tuple<std::string, int, std::string>> known;
    ForEachLink(site, [&](const LinkedPage& page, const PageLink& link, const Target&) {
        if (ReadAddress(link.address).kind != AddressKind::external)
            return;
        const Place where = PlaceOf(page, link);
        if (known.emplace(where.file, where.line, link.address).second)
            found.push_back({link.address, where});
    });
    std::ranges::stable_sort(found, {}, [](const ExternalLink& link) {
        return std::tuple(UpperCase(link.where.file), link.where.line);
    });
    return found;
}

} // namespace kiv
