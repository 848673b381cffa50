// What pages are called, without the words that all of their titles have.
#pragma once

#include <string>
#include <vector>

namespace kiv {

/// The titles without what most of them begin or end with: "Opening hours" of "Opening hours - The
/// mill". One that is nothing else stays whole.
std::vector<std::string> ShortTitles(const std::vector<std::string>& titles);

} // namespace kiv
