// What a page says of itself and of the pages around it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// What the tags of a page tell. Addresses are as they stand there.
struct PageHints {
    std::string title;    // on one line, no blanks around it; "" when there is none
    std::string previous; // as its tags say by "rel" or "accesskey"
    std::string next;
    std::string called_previous; // where a link leads that is called "Previous", "Back" or the like
    std::string called_next;
    std::vector<std::string> links; // in the order of the page
};

PageHints HintsOf(std::string_view bytes);

/// The file that a page's address leads to, as seen from the folder of the site: "sub/b.html" for
/// "b.html#top" on "sub/a.html". "" for what lies elsewhere.
std::string LinkTarget(std::string_view address, std::string_view page);

} // namespace kiv
