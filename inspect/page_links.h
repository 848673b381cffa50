// For the families of findings over pages: the links of a section's pages, one after the other.
#pragma once

#include "inspect/linked_site.h"
#include "inspect/site_view.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

/// Calls `look(page)` for each page of the section.
template <typename Look>
void ForEachPage(const SiteView& site, Look look)
{
    if (site.linked != nullptr)
        for (const LinkedPage& page : site.linked->Pages())
            if (page.view == &site)
                look(page);
}

/// Calls `look(page, link, target)` for each link of its pages.
template <typename Look>
void ForEachLink(const SiteView& site, Look look)
{
    ForEachPage(site, [&](const LinkedPage& page) {
        for (std::size_t index = 0; index < page.targets.size(); ++index)
            look(page, page.facts.links[index], *page.targets[index]);
    });
}

/// The source line of a link.
inline Place PlaceOf(const LinkedPage& page, const PageLink& link)
{
    return page.view->PlaceOf(*page.text, link.line, link.Words());
}

/// "\"about.htm\"", for a sentence; cut when it is longer than anybody reads.
inline std::string InQuotes(std::string_view text)
{
    constexpr std::size_t kLongest = 200;
    const std::string_view end = text.size() > kLongest ? "...\"" : "\"";
    return std::string("\"").append(text.substr(0, kLongest)).append(end);
}

} // namespace kiv
