// The file that tells search engines of a site's pages.
#pragma once

#include "exchange/web_date.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

struct MappedPage {
    std::string address;
    WebTime time = 0; // of its last change
};

/// What stands in every file that kiv writes so, and tells it from others.
inline constexpr std::string_view kSiteMapMark = "made by kiv-cli sitemap-xml";

/// So many pages one file may have.
inline constexpr std::size_t kMostMappedPages = 50'000;

/// The pages in their order.
std::string SiteMapText(const std::vector<MappedPage>& pages);

} // namespace kiv
