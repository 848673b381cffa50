// What the pages of a site have in common at head and tail.
#pragma once

#include "exchange/menu_forms.h"
#include "exchange/page_codes.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace kiv {

/// Lines that follow each other on many pages.
struct SharedRun {
    std::vector<CodedLine> lines;
    std::vector<std::size_t> starts; // for each page the line it begins at, from 0, or npos
};

/// Pages that look alike.
struct PageFamily {
    std::vector<SharedRun> runs;    // in the order of the page
    std::vector<std::size_t> pages; // numbers, from 0
};

/// A page as this looks at it.
struct ComparedPage {
    const std::vector<std::string_view>* lines;
    CodeValues values;
};

/// The families of a site, the largest first. A page that looks like no other is in none. Every
/// run of a family has the starts of all pages; those of other families have none.
std::vector<PageFamily> FindFamilies(const std::vector<ComparedPage>& pages, MenuForms& menus);

} // namespace kiv
