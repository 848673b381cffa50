// Small pieces of text that several block expanders put into their output.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

inline constexpr std::string_view kCrLf = "\r\n";

/// Every double quote as "&quot;".
std::string quotefix(std::string_view text);

/// The image tag of a bar, `width` by `height` pixels.
std::string zbar(std::string_view width, std::string_view height);

} // namespace kiv
