// A chapter as the HTML body that the manual's page list puts in.
#pragma once

#include <string>
#include <string_view>

namespace kiv::manual {

/// The HTML of a chapter's text. A chapter whose first line is "!steps" goes on from example to
/// example: files that have not changed since the one before are folded up.
std::string ChapterHtml(std::string_view text);

} // namespace kiv::manual
