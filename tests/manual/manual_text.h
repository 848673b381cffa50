// The manual's chapters as the tests read them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// All chapters, in the order of their names.
std::vector<std::filesystem::path> Chapters();

/// Every `code` of a chapter's prose, or of all chapters' when `chapter` is empty.
const std::vector<std::string>& CodeSpans(std::string_view chapter = {});

/// Those of `names` that no span is. A name that ends in a mark such as "[" or ":" may be the
/// beginning of one. Case does not matter.
std::vector<std::string> Unmentioned(const std::vector<std::string>& names,
                                     const std::vector<std::string>& spans);

/// Those of `texts` that stand in no span. Line ends and blanks at the ends do not count, nor do
/// texts of fewer than three characters.
std::vector<std::string> Untold(const std::vector<std::string>& texts,
                                const std::vector<std::string>& spans);

} // namespace kiv::test
