// The pages of a site as the web has them.
#pragma once

#include "exchange/web_date.h"
#include "inspect/site_view.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class BuiltSections;
struct Machine;

/// A page that is there; `view` and `text` belong to the sections.
struct PublishedPage {
    const SiteView* view;
    const PageText* text;
    std::string address;
    WebTime time; // of its file
    bool is_utf8; // as it declares
};

/// A text of the page list as UTF-8, without what XML cannot hold.
std::string WebText(std::string_view text, bool is_utf8);

/// The pages of a site and the folder that they are published from.
struct PublishedSite {
    std::string folder; // absolute, ends in "\"
    std::vector<PublishedPage> pages;
};

/// The pages of all sections that lie in the site's folder and that search engines may know, in the
/// order of the lists. Warns of those that are not built yet or lie elsewhere. Throws RunError of
/// kind `file` when there is none.
PublishedSite PublishedPages(Machine& machine, const BuiltSections& sections,
                             std::string_view base);

/// Writes a file of the site's folder, whose first lines hold `mark`. Throws RunError of kind
/// `file` when a page of the site has its name, or a file without the mark.
void WriteMarkedFile(Machine& machine, const BuiltSections& sections, const std::string& path,
                     std::string_view mark, std::string_view text);

} // namespace kiv
