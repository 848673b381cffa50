// The manual's pages cut at their headings: what an index and a search look through.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv::manual {

/// What stands under a heading.
struct PageSection {
    std::string heading; // "" above the first one
    std::string id;      // of the heading on the page; "" above the first one
    std::string text;    // its prose and the titles of its examples, without marks, on one line;
                         // the cells of a table are parted by " | "
    std::vector<std::string> codes; // each `code` of its prose
};

struct ManualPage {
    std::string name;  // "directives"
    std::string title; // "Directives"
    std::string chapter;
    std::vector<PageSection> sections;
};

/// The sections of a chapter's text; one that holds nothing is left out.
std::vector<PageSection> SectionsOf(std::string_view chapter);

/// The pages of the manual in `folder`, in the order of its page list, each with its chapter.
/// Throws std::runtime_error when a chapter is missing or is no page.
std::vector<ManualPage> ReadManual(const std::string& folder);

} // namespace kiv::manual
