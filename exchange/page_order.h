// The order in which the pages of a folder follow each other.
#pragma once

#include "exchange/old_site.h"
#include "exchange/page_links.h"

#include <string_view>
#include <vector>

namespace kiv {

/// What the order went by.
enum class OrderedBy { links_between, index_page, names };

struct PageOrder {
    std::vector<std::size_t> pages; // numbers of the pages, from 0
    OrderedBy by = OrderedBy::names;
};

/// In words that go on from "ordered by".
std::string_view OrderWords(OrderedBy by);

/// By the links to the previous and next page where most pages have such, else by the links of the
/// index page, else by name. What none of them tells of comes last, by name. `hints`: of each page.
PageOrder OrderPages(const std::vector<FoundPage>& pages, const std::vector<PageHints>& hints);

} // namespace kiv
