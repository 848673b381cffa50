// Files for feed readers.
#pragma once

#include "exchange/web_date.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// Texts are UTF-8; titles and summaries may have tags and entities of HTML.
struct FeedItem {
    std::string address;
    std::string title;
    std::string summary = {}; // may be empty
    std::string author = {};  // may be empty
    WebTime time = 0;
};

struct Feed {
    std::string address; // of the site
    std::string title;
    std::string summary;
    std::string self;            // its own address
    std::vector<FeedItem> items; // at least one, the newest first
};

/// What stands in every file that kiv writes so, and tells it from others.
inline constexpr std::string_view kFeedMark = "made by kiv-cli feed";

/// RSS 2.0 and Atom. The same feed gives the same bytes: its time is that of its newest item.
std::string RssText(const Feed& feed);
std::string AtomText(const Feed& feed);

} // namespace kiv
