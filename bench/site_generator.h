// Sites to measure with: a page list and a template in a folder, the same bytes on every machine.
#pragma once

#include <array>
#include <filesystem>
#include <string_view>

namespace kiv {

/// How large a generated site is.
struct SiteSize {
    std::string_view name;
    int pages;
    int lines_a_page; // with the page's "@FILE =" and "@TITLE =" lines
    int template_lines;
    bool lists_all_pages; // the template holds the list of all pages
};

/// 999 pages are the most a page list can have.
inline constexpr std::array<SiteSize, 4> kSiteSizes{{
    {"S", 20, 40, 60, false},
    {"M", 300, 100, 60, false},
    {"L", 999, 37, 60, false},
    {"X", 999, 37, 400, true},
}};

/// The size of that name, or null.
const SiteSize* FindSiteSize(std::string_view name);

/// Writes `_html.txt` and `_template.txt` into the existing folder `dir`. Two editions differ in
/// one line of the page in the middle of the list. Throws std::ios_base::failure when a file cannot
/// be written.
void WriteSite(const SiteSize& size, const std::filesystem::path& dir, int edition = 0);

} // namespace kiv
