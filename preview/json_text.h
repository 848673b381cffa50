// Text as JSON has it.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// UTF-8 between quotes; a byte that is part of no valid character becomes U+FFFD. May stand in a
/// page's script as well.
std::string JsonText(std::string_view utf8);

} // namespace kiv
